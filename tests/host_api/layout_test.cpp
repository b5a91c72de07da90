// Sizes, alignments, offsets and values of host_api against tables of the hosts' interface.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "host_api/host_api.h"

namespace {

struct Row {
    std::string record;  // empty for constants
    std::string what;
    std::int64_t expected;
    std::int64_t actual;
};

template <class Number>
constexpr std::int64_t number(Number value) {
    return static_cast<std::int64_t>(value);
}

const Row kRows[] = {
#define RECORD(type, size, alignment)                      \
    {#type, "size of " #type, size, number(sizeof(type))}, \
        {#type, "alignment of " #type, alignment, number(alignof(type))},
#define FIELD(type, field, offset, size)                                           \
    {#type, "offset of " #type "." #field, offset, number(offsetof(type, field))}, \
        {#type, "size of " #type "." #field, size, number(sizeof(type{}.field))},
#define CONSTANT(name, value) {"", "value of " #name, value, number(name)},
#include "constants_table.inc"
#include "layout_table.inc"
#undef RECORD
#undef FIELD
#undef CONSTANT
};

void checkRows(const std::string& record) {
    std::size_t checked = 0;
    for (const Row& row : kRows) {
        if (row.record != record) continue;
        EXPECT_EQ(row.actual, row.expected) << row.what;
        ++checked;
    }
    EXPECT_GT(checked, 2U) << record;
}

class Layout : public testing::TestWithParam<const char*> {};

TEST_P(Layout, isTheHosts) {
    checkRows(GetParam());
}

const char* const kRecords[] = {
#define RECORD(type, size, alignment) #type,
#define FIELD(type, field, offset, size)
#include "layout_table.inc"
#undef RECORD
#undef FIELD
};

INSTANTIATE_TEST_SUITE_P(HostApi, Layout, testing::ValuesIn(kRecords),
                         [](const auto& record) { return std::string(record.param); });

TEST(Constants, areTheHosts) {
    checkRows("");
}

TEST(SuiteNames, areTheHosts) {
    EXPECT_STREQ(kPFPixelFormatSuite, "PF Pixel Format Suite");
    EXPECT_STREQ(kPFParamUtilsSuite, "PF Param Utils Suite");
    EXPECT_STREQ(kPFTransitionSuite, "PF Transition Suite");
    EXPECT_STREQ(kPrSDKGPUDeviceSuite, "MediaCore GPU Device Suite");
    EXPECT_STREQ(kPrSDKGPUImageProcessingSuite, "MediaCore GPU Image Processing Suite");
    EXPECT_STREQ(kPrSDKMemoryManagerSuite, "Premiere Memory Manager Suite");
    EXPECT_STREQ(kPrSDKPPixSuite, "Premiere PPix Suite");
    EXPECT_STREQ(kPrSDKPPix2Suite, "Premiere PPix 2 Suite");
    EXPECT_STREQ(kPrSDKVideoSegmentSuite, "MediaCore Video Segment Suite");
}

}  // namespace
