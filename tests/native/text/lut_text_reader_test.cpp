// parseEmbeddedText: the forms, the refusals and what they leave behind.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/luts.h"
#include "tests/support/row_name.h"

namespace {

const char kPattern[] = "bad calibration pattern size";
const char kNot3[] = "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)";
const char kNot2[] = "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)";
const char kRange[] = "LUT size out of range";
const char kTruncated[] = "LUT data is truncated";

const std::vector<std::uint16_t> kCodes = twtest::scatteredCodes(24);
const std::string kData = twtest::encodeCodes(kCodes);

std::vector<float> valuesOf(const std::vector<std::uint16_t>& codes, float lo, float hi) {
    const float step = (hi - lo) / 65535.0f;
    std::vector<float> values;
    for (const std::uint16_t code : codes)
        values.push_back(std::fma(static_cast<float>(code), step, lo));
    return values;
}

tw::Lut3D twoPointLut(std::int64_t id, const std::string& name, float lo = 0, float hi = 1) {
    tw::Lut3D lut;
    lut.size = 2;
    lut.id = id;
    lut.name = name;
    lut.data = valuesOf(kCodes, lo, hi);
    return lut;
}

// A record of which every field must be reset.
tw::Lut3D usedLut() {
    tw::Lut3D lut = twtest::scatteredLut(3, 50);
    lut.id = 11;
    lut.probe = 12;
    lut.name = "used";
    for (int c = 0; c < 3; ++c)
        twtest::setDomain(lut, c, -1, 2);
    return lut;
}

::testing::AssertionResult readsAs(const tw::Lut3D& expected, const std::string& text) {
    tw::Lut3D lut = usedLut();
    std::string error = "untouched";
    if (!tw::parseEmbeddedText(text, lut, &error))
        return ::testing::AssertionFailure() << "failed with \"" << error << '"';
    if (error != "untouched")
        return ::testing::AssertionFailure() << "success wrote \"" << error << '"';
    return twtest::sameLut(expected, lut);
}

TEST(ParseEmbeddedText, givesEmptyRecord_forNoLut) {
    const tw::Lut3D none;
    EXPECT_TRUE(readsAs(none, "TWLUT0"));
    EXPECT_TRUE(readsAs(none, "TWLUT0 2 0 1 AAAA"));
    EXPECT_TRUE(readsAs(none, "TWLUT0garbage"));
    EXPECT_TRUE(readsAs(none, std::string("TWLUT0\0\xFF", 8)));
}

TEST(ParseEmbeddedText, releasesSamples_forNoLut) {
    tw::Lut3D lut = usedLut();
    ASSERT_TRUE(tw::parseEmbeddedText("TWLUT0", lut, nullptr));
    EXPECT_EQ(0U, lut.data.capacity());
}

TEST(ParseEmbeddedText, readsEveryForm) {
    EXPECT_TRUE(readsAs(twoPointLut(0, ""), "TWLUT1 2 0 1 " + kData));
    EXPECT_TRUE(readsAs(twoPointLut(42, ""), "TWLUT2 42 2 0 1 " + kData));
    EXPECT_TRUE(readsAs(twoPointLut(42, "My LUT"), "TWLUT3 42 My%20LUT 2 0 1 " + kData));
    EXPECT_TRUE(readsAs(twoPointLut(42, ""), "TWLUT3 42 - 2 0 1 " + kData));
}

TEST(ParseEmbeddedText, readsIds_of64Bits) {
    EXPECT_TRUE(readsAs(twoPointLut(9223372036854775807, "n"),
                        "TWLUT3 9223372036854775807 n 2 0 1 " + kData));
    EXPECT_TRUE(readsAs(twoPointLut(-9223372036854775807 - 1, ""),
                        "TWLUT2 -9223372036854775808 2 0 1 " + kData));
}

// The product and the sum are rounded once. Two roundings would differ in some of these codes.
TEST(ParseEmbeddedText, spreadsCodes_withOneRounding) {
    const float lo = -0.1f;
    const float hi = 0.7f;
    EXPECT_TRUE(readsAs(twoPointLut(0, "", lo, hi), "TWLUT1 2 -0.100000001 0.699999988 " + kData));
    const float step = (hi - lo) / 65535.0f;
    int differences = 0;
    std::vector<std::uint16_t> codes = twtest::scatteredCodes(tw::latticeFloats(17));
    for (const std::uint16_t code : codes) {
        const float product = static_cast<float>(code) * step;
        if (product + lo != std::fma(static_cast<float>(code), step, lo)) ++differences;
    }
    ASSERT_GT(differences, 0);
    tw::Lut3D expected;
    expected.size = 17;
    expected.data = valuesOf(codes, lo, hi);
    EXPECT_TRUE(
        readsAs(expected, "TWLUT1 17 -0.100000001 0.699999988 " + twtest::encodeCodes(codes)));
}

TEST(ParseEmbeddedText, readsReversedRange) {
    EXPECT_TRUE(readsAs(twoPointLut(0, "", 1, -1), "TWLUT1 2 1 -1 " + kData));
}

TEST(ParseEmbeddedText, readsPatternSizes_2To64) {
    for (const int size : {2, 3, 17, 63, 64}) {
        tw::Lut3D pattern;
        pattern.probe = size;
        EXPECT_TRUE(readsAs(pattern, "TWLUTP " + std::to_string(size))) << size;
    }
}

struct Refusal {
    const char* name;
    std::string text;
    const char* message;
    std::int64_t id = 0;
    const char* lutName = "";
};

void PrintTo(const Refusal& row, std::ostream* out) {
    *out << row.name;
}

class ParseEmbeddedTextRefuses : public ::testing::TestWithParam<Refusal> {};

TEST_P(ParseEmbeddedTextRefuses, theText) {
    const Refusal& row = GetParam();
    tw::Lut3D lut = usedLut();
    std::string error = "before";
    EXPECT_FALSE(tw::parseEmbeddedText(row.text, lut, &error)) << row.text;
    EXPECT_EQ(row.message, error) << row.text;
    tw::Lut3D left;
    left.id = row.id;
    left.name = row.lutName;
    EXPECT_TRUE(twtest::sameLut(left, lut)) << row.text;
    EXPECT_FALSE(tw::parseEmbeddedText(row.text, lut, nullptr)) << "without an error string";
}

INSTANTIATE_TEST_SUITE_P(
    Pattern, ParseEmbeddedTextRefuses,
    ::testing::Values(
        Refusal{"One", "TWLUTP 1", kPattern}, Refusal{"SixtyFive", "TWLUTP 65", kPattern},
        Refusal{"Zero", "TWLUTP 0", kPattern}, Refusal{"Negative", "TWLUTP -2", kPattern},
        Refusal{"NoNumber", "TWLUTP", kPattern}, Refusal{"BlankOnly", "TWLUTP ", kPattern},
        Refusal{"Word", "TWLUTP x", kPattern}, Refusal{"Hexadecimal", "TWLUTP 0x10", kPattern},
        Refusal{"SignApart", "TWLUTP + 4", kPattern},
        Refusal{"NulBeforeNumber", std::string("TWLUTP\0 4", 9), kPattern},
        Refusal{"NumberPastHead", "TWLUTP" + std::string(90, ' ') + "4", kPattern}),
    twtest::RowName());

INSTANTIATE_TEST_SUITE_P(
    Form3, ParseEmbeddedTextRefuses,
    ::testing::Values(Refusal{"Alone", "TWLUT3", kNot3}, Refusal{"NoName", "TWLUT3 1", kNot3},
                      Refusal{"NoSize", "TWLUT3 1 n", kNot3},
                      Refusal{"NoHigh", "TWLUT3 1 n 2 0", kNot3},
                      Refusal{"IdIsAWord", "TWLUT3 x n 2 0 1 " + kData, kNot3},
                      Refusal{"SizeIsAWord", "TWLUT3 1 n x 0 1 " + kData, kNot3},
                      Refusal{"LowIsAWord", "TWLUT3 1 n 2 x 1 " + kData, kNot3},
                      Refusal{"HighIsAWord", "TWLUT3 1 n 2 0 , " + kData, kNot3},
                      Refusal{"NulInHeader", std::string("TWLUT3 1 n\0 2 0 1 ", 18) + kData, kNot3},
                      Refusal{"NameOf400", "TWLUT3 1 " + std::string(400, 'n') + " 2 0 1 " + kData,
                              kNot3},
                      Refusal{"HeaderPastRetry",
                              "TWLUT3 1 n" + std::string(1200, ' ') + "2 0 1 " + kData, kNot3}),
    twtest::RowName());

INSTANTIATE_TEST_SUITE_P(
    AnythingElse, ParseEmbeddedTextRefuses,
    ::testing::Values(
        Refusal{"Empty", "", kNot2}, Refusal{"Short", "TWLUT", kNot2},
        Refusal{"OtherText", "hello world", kNot2},
        Refusal{"LowerCase", "twlut1 2 0 1 " + kData, kNot2},
        Refusal{"LeadingBlank", " TWLUT1 2 0 1 " + kData, kNot2},
        Refusal{"UnknownForm", "TWLUT4 2 0 1 " + kData, kNot2},
        Refusal{"Form1Alone", "TWLUT1", kNot2}, Refusal{"Form1NoHigh", "TWLUT1 2 0", kNot2},
        Refusal{"Form1Word", "TWLUT1 two 0 1 " + kData, kNot2},
        Refusal{"Form2Alone", "TWLUT2", kNot2}, Refusal{"Form2NoHigh", "TWLUT2 1 2 0", kNot2},
        Refusal{"Form2Word", "TWLUT2 1 2 0 - " + kData, kNot2},
        Refusal{"Form1PastHead", "TWLUT1" + std::string(90, ' ') + "2 0 1 " + kData, kNot2},
        Refusal{"Form2PastHead", "TWLUT2 1 2 0" + std::string(90, ' ') + "1 " + kData, kNot2}),
    twtest::RowName());

INSTANTIATE_TEST_SUITE_P(
    Size, ParseEmbeddedTextRefuses,
    ::testing::Values(Refusal{"One", "TWLUT1 1 0 1 AAAA", kRange},
                      Refusal{"HundredThirty", "TWLUT1 130 0 1 " + kData, kRange},
                      Refusal{"Zero", "TWLUT1 0 0 1 ", kRange},
                      Refusal{"Negative", "TWLUT1 -2 0 1 " + kData, kRange},
                      Refusal{"Form2One", "TWLUT2 7 1 0 1 " + kData, kRange, 7},
                      Refusal{"Form2HundredThirty", "TWLUT2 7 130 0 1 " + kData, kRange, 7},
                      Refusal{"Form3One", "TWLUT3 8 a%20b 1 0 1 " + kData, kRange, 8, "a b"},
                      Refusal{"Form3HundredThirty", "TWLUT3 8 - 130 0 1 " + kData, kRange, 8}),
    twtest::RowName());

TEST(ParseEmbeddedText, acceptsSizes_2And129) {
    EXPECT_TRUE(readsAs(twoPointLut(0, ""), "TWLUT1 2 0 1 " + kData));
    const std::vector<std::uint16_t> codes = twtest::scatteredCodes(tw::latticeFloats(129));
    tw::Lut3D large;
    large.size = 129;
    large.id = 3;
    large.name = "n";
    large.data = valuesOf(codes, 0, 1);
    EXPECT_TRUE(readsAs(large, "TWLUT3 3 n 129 0 1 " + twtest::encodeCodes(codes)));
}

TEST(ParseEmbeddedText, keepsDecodedValues_whenDataIsTruncated) {
    for (std::size_t letters = 0; letters < kData.size(); ++letters) {
        tw::Lut3D lut = usedLut();
        std::string error;
        EXPECT_FALSE(
            tw::parseEmbeddedText("TWLUT3 5 n 2 -1 1 " + kData.substr(0, letters), lut, &error));
        EXPECT_EQ(kTruncated, error) << letters;
        tw::Lut3D left = twoPointLut(5, "n", -1, 1);
        const auto whole = static_cast<std::ptrdiff_t>(letters * 6 / 16);
        std::fill(left.data.begin() + whole, left.data.end(), 0.0f);
        EXPECT_TRUE(twtest::sameLut(left, lut)) << letters;
    }
}

TEST(ParseEmbeddedText, reportsTruncation_inEveryForm) {
    const std::string less = kData.substr(0, kData.size() - 1);
    for (const std::string head : {"TWLUT1 2 0 1 ", "TWLUT2 1 2 0 1 ", "TWLUT3 1 - 2 0 1 "}) {
        tw::Lut3D lut;
        std::string error;
        EXPECT_FALSE(tw::parseEmbeddedText(head + less, lut, &error)) << head;
        EXPECT_EQ(kTruncated, error) << head;
        EXPECT_FALSE(tw::parseEmbeddedText(head + less, lut, nullptr)) << head;
    }
}

}  // namespace
