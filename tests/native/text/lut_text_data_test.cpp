// Where the data of a TWLUT text stand.
#include <gtest/gtest.h>

#include "native/src/lut_text.h"
#include "tests/support/luts.h"

namespace {

TEST(EmbeddedData, beginBehindTheHeaderAndGoToTheEnd) {
    const std::string text = tw::toEmbeddedText(twtest::scatteredLut(4, 7), 42, "My LUT");
    const auto data = tw::embeddedData(text);
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(data->start, text.rfind(' ') + 1);
    EXPECT_EQ(data->characters, 4u * 4 * 4 * 3 * 2 / 3 * 4);
    EXPECT_EQ(data->start + data->characters, text.size());
}

TEST(EmbeddedData, areFoundInEveryForm_beforeTheyAreThere) {
    for (const char* head : {"TWLUT1 2 0 1 ", "TWLUT2 7 2 0 1 ", "TWLUT3 7 - 2 0 1 "}) {
        const auto data = tw::embeddedData(head);
        ASSERT_TRUE(data.has_value()) << head;
        EXPECT_EQ(data->start, std::string(head).size()) << head;
        EXPECT_EQ(data->characters, 64u) << head;
    }
}

TEST(EmbeddedData, beginAtTheCut_whenTheHeaderEndsThere) {
    const std::string head = "TWLUT3 7 " + std::string(80, 'n') + " 2 0 123456789";
    const auto data = tw::embeddedData(head);
    ASSERT_TRUE(data.has_value());
    EXPECT_EQ(data->start, 96u);
}

TEST(EmbeddedData, areNone_whereTheReaderRefusesTheHeader) {
    for (const char* text : {"", "TWLUT0", "TWLUTP 17", "TWLUT3 7 -", "TWLUT1 130 0 1 AAAA",
                             "TWLUT1 1 0 1 AAAA", "hello"}) {
        EXPECT_FALSE(tw::embeddedData(text).has_value()) << text;
    }
}

}  // namespace
