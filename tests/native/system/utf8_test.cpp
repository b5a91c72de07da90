// toUtf8 and fromUtf8, lenient both ways.
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "native/src/paths.h"
#include "tests/support/row_name.h"

namespace {

struct Row {
    const char* name;
    std::vector<unsigned long> codes;
    std::string bytes;
};

std::wstring wide(const std::vector<unsigned long>& codes) {
    std::wstring text;
    for (const unsigned long code : codes)
        text += static_cast<wchar_t>(code);
    return text;
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}

class BothWays : public ::testing::TestWithParam<Row> {};

TEST_P(BothWays, isEncodedAndDecoded) {
    const Row& row = GetParam();
    EXPECT_EQ(row.bytes, tw::toUtf8(wide(row.codes)));
    EXPECT_EQ(wide(row.codes), tw::fromUtf8(row.bytes));
}

INSTANTIATE_TEST_SUITE_P(
    Utf8, BothWays,
    ::testing::Values(Row{"Empty", {}, ""}, Row{"Ascii", {0x41, 0x7F}, "A\x7F"},
                      Row{"Nul", {0x41, 0, 0x42}, std::string("A\0B", 3)},
                      Row{"FirstOfTwo", {0x80}, "\xC2\x80"}, Row{"Accent", {0xE9}, "\xC3\xA9"},
                      Row{"LastOfTwo", {0x7FF}, "\xDF\xBF"},
                      Row{"FirstOfThree", {0x800}, "\xE0\xA0\x80"},
                      Row{"Euro", {0x20AC}, "\xE2\x82\xAC"},
                      Row{"LastOfThree", {0xFFFF}, "\xEF\xBF\xBF"},
                      Row{"FirstOfFour", {0x10000}, "\xF0\x90\x80\x80"},
                      Row{"Face", {0x1F600}, "\xF0\x9F\x98\x80"},
                      Row{"LastCodePoint", {0x10FFFF}, "\xF4\x8F\xBF\xBF"},
                      Row{"HighSurrogate", {0xD800}, "\xED\xA0\x80"},
                      Row{"LowSurrogate", {0xDFFF}, "\xED\xBF\xBF"},
                      Row{"SurrogatePair", {0xD83D, 0xDE00}, "\xED\xA0\xBD\xED\xB8\x80"},
                      Row{"BeyondUnicode", {0x110000}, "\xF4\x90\x80\x80"},
                      Row{"LastOfFour", {0x1FFFFF}, "\xF7\xBF\xBF\xBF"},
                      Row{"Mixed",
                          {0x2F, 0xFC, 0x1F600, 0x20AC, 0x2E},
                          "/\xC3\xBC\xF0\x9F\x98\x80\xE2\x82\xAC."}),
    twtest::RowName());

class FromUtf8 : public ::testing::TestWithParam<Row> {};

TEST_P(FromUtf8, isLenient_for) {
    EXPECT_EQ(wide(GetParam().codes), tw::fromUtf8(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(
    Utf8, FromUtf8,
    ::testing::Values(Row{"CutTwo", {}, "\xC3"}, Row{"CutThreeAfterOne", {}, "\xE2"},
                      Row{"CutThreeAfterTwo", {0x41}, "A\xE2\x82"},
                      Row{"CutFourAfterOne", {}, "\xF0"}, Row{"CutFourAfterTwo", {}, "\xF0\x9F"},
                      Row{"CutFourAfterThree", {0xE9}, "\xC3\xA9\xF0\x9F\x98"},
                      Row{"CutDropsAllThatFollows",
                          {0x41},
                          "A\xF0"
                          "BC"},
                      Row{"StrayContinuation",
                          {0x80, 0xBF, 0x41},
                          "\x80\xBF"
                          "A"},
                      Row{"SurplusContinuation", {0xE9, 0xA9}, "\xC3\xA9\xA9"},
                      Row{"OverlongTwo", {0}, "\xC0\x80"}, Row{"OverlongSlash", {0x2F}, "\xC0\xAF"},
                      Row{"OverlongThree", {0x2F}, "\xE0\x80\xAF"},
                      Row{"OverlongFour", {0x2F}, "\xF0\x80\x80\xAF"},
                      Row{"LetterAsContinuation",
                          {0xC1},
                          "\xC3"
                          "A"},
                      Row{"LeadAsContinuation", {0xC3}, "\xC3\xC3"},
                      Row{"LettersAsContinuations",
                          {0x1081},
                          "\xE1"
                          "BA"},
                      Row{"LeadF8", {0}, "\xF8\x80\x80\x80"},
                      Row{"LeadFF",
                          {0x1FFFFF, 0x41},
                          "\xFF\xBF\xBF\xBF"
                          "A"},
                      Row{"LeadFE", {0x180000}, "\xFE\x80\x80\x80"},
                      Row{"TwoByteLeadAtOnce", {0xE9, 0xE9}, "\xC3\xA9\xC3\xA9\xC3"}),
    twtest::RowName());

TEST(ToUtf8, keepsLowByteOfLead_farBeyondUnicode) {
    EXPECT_EQ("\xF8\x80\x80\x80", tw::toUtf8(wide({0x200000})));
    EXPECT_EQ("\xFF\xBF\xBF\xBF", tw::toUtf8(wide({0x7FFFFFFF})));
    EXPECT_EQ(
        "\xF1\x80\x80\x80"
        "A",
        tw::toUtf8(wide({0x4040000, 0x41})));
}

TEST(Utf8, comesBackUnchanged_forEveryCodePoint) {
    std::wstring all;
    for (unsigned long code = 0; code <= 0x10FFFF; ++code)
        all += static_cast<wchar_t>(code);
    EXPECT_TRUE(tw::fromUtf8(tw::toUtf8(all)) == all);
    for (const unsigned long code : {0x0UL, 0x7FUL, 0x80UL, 0x7FFUL, 0x800UL, 0xFFFFUL, 0x10000UL})
        EXPECT_EQ(wide({code, code}), tw::fromUtf8(tw::toUtf8(wide({code, code})))) << code;
}

}  // namespace
