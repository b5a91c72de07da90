// parseCube: how numbers are read, and what happens where they run over a line end.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/float_check.h"
#include "tests/support/locales.h"

namespace {

const std::string kSize = "LUT_3D_SIZE 2\n";

std::string zeroLines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += "0 0 0\n";
    return text;
}

// First values of the two-point cube in `text`; the rest must be there and is 0.
::testing::AssertionResult startsWith(const std::vector<float>& values, const std::string& text) {
    tw::Lut3D lut;
    std::string error;
    if (!tw::parseCube(text, lut, &error))
        return ::testing::AssertionFailure() << "\"" << error << "\" for\n" << text;
    std::vector<float> expected = values;
    expected.resize(24, 0.0f);
    return twtest::sameBits(expected, lut.data) << " for\n" << text;
}

const char* const kNumbers[] = {
    "0",
    "-0",
    "+0",
    "1",
    "-1",
    "+1",
    "007",
    ".5",
    "5.",
    "-.5",
    "+.5e1",
    "1e5",
    "1E5",
    "1e+5",
    "1e-5",
    "1e",
    "1e+",
    "1ex",
    "1.5.5",
    "0.1",
    "0.3",
    "0.9999999",
    "3.4028234e38",
    "3.4028235677973366e38",
    "3.4028236e38",
    "1e39",
    "-1e39",
    "1e999999999",
    "1e-999999999",
    "1.17549435e-38",
    "1.1754942e-38",
    "1e-45",
    "7e-46",
    "7.1e-46",
    "1e-46",
    "-1e-46",
    "0x1",
    "0x1p-1",
    "0X1.8P+3",
    "0x.8",
    "0x1.fffffep127",
    "0x1.ffffffp127",
    "0x1p-149",
    "0x1p-150",
    "0x1.8p-150",
    "0x1.000001p0",
    "0x1.000003p0",
    "0xA.Bp2",
    "0x1p",
    "0xg",
    "0x",
    "inf",
    "-inf",
    "+INF",
    "infinity",
    "-INFINITY",
    "InFiniTyx",
    "infinit",
    "nan",
    "-nan",
    "NaN",
    "nan()",
    "nan(1)",
    "nan(0x7)",
    "-nan(abc)",
    "nan(",
    "1.000000059604644775390625",
    "1.0000000596046447753906250000000000000001",
    "1.0000000596046447753906249999999999999999",
    "1.000000178813934326171875",
    "1.0000001788139343261718749999999999999999",
    "0.0000000000000000000000000000000000000117549428",
    "123456789012345678901234567890.123456789",
    "16777217",
    "16777219",
    "33554435.0000000000001",
    "0.000000000000000000000000000000000000000000000700649232162408535461864791644958065640131",
    "0.000000000000000000000000000000000000000000000700649232162408535461864791644958065640130"};

// The third number of a line may be followed by anything.
TEST(ParseCubeNumbers, equalStrtof_bitForBit) {
    for (const std::string number : kNumbers) {
        SCOPED_TRACE(number);
        const float expected = std::strtof(number.c_str(), nullptr);
        EXPECT_TRUE(startsWith({0, 0, expected}, kSize + "0 0 " + number + "\n" + zeroLines(7)));
    }
}

TEST(ParseCubeNumbers, roundOnce_atMidpoints) {
    const std::vector<std::pair<std::string, std::uint32_t>> rows = {
        {"1.000000059604644775390625", 0x3F800000},
        {"1.0000000596046447753906250000000000000001", 0x3F800001},
        {"1.0000000596046447753906249999999999999999", 0x3F800000},
        {"1.000000178813934326171875", 0x3F800002},
        {"1.0000001788139343261718749999999999999999", 0x3F800001},
        {"0x1.000001p0", 0x3F800000},
        {"0x1.00000100000000001p0", 0x3F800001},
        {"3.4028235677973367e38", 0x7F800000},
        {"3.4028235677973366e38", 0x7F7FFFFF},
        {"1e-45", 0x00000001},
        {"-1e-46", 0x80000000},
        {"-inf", 0xFF800000}};
    for (const auto& [number, bits] : rows) {
        SCOPED_TRACE(number);
        EXPECT_TRUE(startsWith({0, 0, twtest::fromBits(bits)},
                               kSize + "0 0 " + number + "\n" + zeroLines(7)));
    }
}

TEST(ParseCubeNumbers, standWithoutBlanks_whereSignsOrPointsPartThem) {
    EXPECT_TRUE(startsWith({1, -2, 3}, kSize + "1-2+3\n" + zeroLines(7)));
    EXPECT_TRUE(startsWith({0.5f, 0.25f, 0.125f}, kSize + "0.5.25.125\n" + zeroLines(7)));
    EXPECT_TRUE(startsWith({1, 2, 3}, kSize + "1\v2\f3\n" + zeroLines(7)));
    EXPECT_TRUE(startsWith({1, 2, 3}, kSize + "\v1 2 3\n" + zeroLines(7)));
}

TEST(ParseCubeNumbers, areData_whenLineBeginsNanOrInf) {
    const float inf = std::strtof("inf", nullptr);
    const float nan = std::strtof("nan", nullptr);
    EXPECT_TRUE(startsWith({nan, 1, 2, inf, 3, 4, -inf, 5, 6},
                           kSize + "nan 1 2\ninf 3 4\n-INF 5 6\n" + zeroLines(5)));
}

TEST(ParseCubeNumbers, comeFromNextLine_whenLineIsShort) {
    EXPECT_TRUE(startsWith({0.1f, 0.2f, 0.3f, 0.3f, 0.4f, 0.5f},
                           kSize + "0.1 0.2\n0.3 0.4 0.5\n" + zeroLines(6)));
}

TEST(ParseCubeNumbers, comeFromSeveralLines_whenLinesHoldOneNumber) {
    EXPECT_TRUE(startsWith({1, 2, 3, 2, 3, 4, 3, 4, 0, 4, 0, 0},
                           kSize + "1\n2\r\n\n3\n4\n" + zeroLines(4)));
}

// The word at the start of a keyword line is a number for the line above it and a keyword after.
TEST(ParseCubeNumbers, comeFromKeywordLine_whenItStartsWithInf) {
    const float inf = std::strtof("inf", nullptr);
    EXPECT_TRUE(startsWith({1, 2, inf}, kSize + "1 2\nINF_RANGE 5\n" + zeroLines(7)));
}

TEST(ParseCubeNumbers, sizeComesFromNextLine_whichIsThenData) {
    EXPECT_TRUE(startsWith({2, 7, 8}, "LUT_3D_SIZE\n2 7 8\n" + zeroLines(7)));
    EXPECT_TRUE(startsWith({2, 0, 0}, "LUT_3D_SIZE \r\n\n 2\n" + zeroLines(7)));
}

TEST(ParseCubeNumbers, domainComesFromNextLines_whichAreThenData) {
    tw::Lut3D lut;
    std::string error;
    const std::string text = kSize + "DOMAIN_MAX 4\n5\n6 7 8\n9 9 9\n" + zeroLines(5);
    ASSERT_TRUE(tw::parseCube(text, lut, &error)) << error;
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{4, 5, 6}, lut.domainMax));
    lut.data.resize(9);
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{5, 6, 7, 6, 7, 8, 9, 9, 9}, lut.data));
}

TEST(ParseCubeNumbers, domainMayBeInfinite_whenItIncreases) {
    tw::Lut3D lut;
    std::string error;
    ASSERT_TRUE(tw::parseCube(kSize + zeroLines(8) + "DOMAIN_MIN -inf 0 0\nDOMAIN_MAX 1 1e39 1\n",
                              lut, &error))
        << error;
    const float inf = std::strtof("inf", nullptr);
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{-inf, 0, 0}, lut.domainMin));
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{1, inf, 1}, lut.domainMax));
}

TEST(ParseCubeNumbers, useFullStop_inDecimalCommaLocale) {
    const twtest::CommaLocale locale;
    if (!locale.usable()) GTEST_SKIP() << "no locale with a decimal comma, and no way to make one";
    EXPECT_TRUE(startsWith({0.5f, -0.25f, 0.125f}, kSize + "0.5 -.25 0x.2p0\n" + zeroLines(7)));
    tw::Lut3D lut;
    std::string error;
    EXPECT_FALSE(tw::parseCube(kSize + "0,5 0,25 0,125\n" + zeroLines(7), lut, &error));
    EXPECT_EQ("malformed data line", error);
    ASSERT_TRUE(tw::parseCube(kSize + "DOMAIN_MAX 1.5 2.5 3.5\n" + zeroLines(8), lut, &error))
        << error;
    EXPECT_TRUE(twtest::sameBits(std::vector<float>{1.5f, 2.5f, 3.5f}, lut.domainMax));
}

TEST(ParseCubeNumbers, leaveTheLocaleToTheHost) {
    const twtest::CommaLocale locale;
    if (!locale.usable()) GTEST_SKIP() << "no locale with a decimal comma, and no way to make one";
    tw::Lut3D lut;
    EXPECT_TRUE(tw::parseCube(kSize + zeroLines(8), lut, nullptr));
    EXPECT_FALSE(tw::parseCube("", lut, nullptr));
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    EXPECT_STREQ("0,5", text);
}

}  // namespace
