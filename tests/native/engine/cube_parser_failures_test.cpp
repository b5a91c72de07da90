// parseCube: every refusal, with its whole message and the state that it leaves behind.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <ostream>
#include <string>

#include "native/src/lut_engine.h"
#include "tests/support/cube_messages.h"
#include "tests/support/luts.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

using twtest::kCount;
using twtest::kData;
using twtest::kDomain;
using twtest::kNoSize;
using twtest::kOneD;
using twtest::kRange;

const std::string kSize = "LUT_3D_SIZE 2\n";
const std::string kSeven = "0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n";
const std::string kEight = kSeven + "0 0 0\n";

struct Refusal {
    const char* name;
    std::string text;
    const char* message;
    int size = 0;
    float low[3] = {0, 0, 0};
    float high[3] = {1, 1, 1};
};

void PrintTo(const Refusal& row, std::ostream* out) {
    *out << row.name;
}

class ParseCubeRefuses : public ::testing::TestWithParam<Refusal> {};

TEST_P(ParseCubeRefuses, theText) {
    const Refusal& row = GetParam();
    tw::Lut3D lut = twtest::scatteredLut(3, 2);
    lut.id = 5;
    lut.probe = 6;
    lut.name = "old";
    twtest::setDomain(lut, 0, -8, 8);
    std::string error = "before";
    EXPECT_FALSE(tw::parseCube(row.text, lut, &error)) << row.text;
    EXPECT_EQ(row.message, error) << row.text;
    tw::Lut3D left;
    left.size = row.size;
    for (int c = 0; c < 3; ++c)
        twtest::setDomain(left, c, row.low[c], row.high[c]);
    EXPECT_TRUE(twtest::sameLut(left, lut)) << row.text;
    EXPECT_EQ(0U, lut.data.capacity());
    EXPECT_FALSE(tw::parseCube(row.text, lut, nullptr)) << "without an error string";
}

std::string rowName(const ::testing::TestParamInfo<Refusal>& row) {
    return row.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    SizeLine, ParseCubeRefuses,
    ::testing::Values(
        Refusal{"One", "LUT_3D_SIZE 1\n" + kEight, kRange, 1},
        Refusal{"TwoHundredFiftySeven", "LUT_3D_SIZE 257\n", kRange, 257},
        Refusal{"Zero", "LUT_3D_SIZE 0\n", kRange, 0},
        Refusal{"Negative", "LUT_3D_SIZE -2\n", kRange, -2},
        Refusal{"Missing", "LUT_3D_SIZE", kRange, 0},
        Refusal{"LongerKeyword", "LUT_3D_SIZES 2\n" + kEight, kRange, 0},
        Refusal{"NulBeforeNumber", std::string("LUT_3D_SIZE\0 2\n", 15) + kEight, kRange, 0},
        Refusal{"SecondOutOfRange", kSize + kEight + "LUT_3D_SIZE 300\n", kRange, 300},
        Refusal{"NeverSeen", kEight, kNoSize}, Refusal{"EmptyText", "", kNoSize},
        Refusal{"CommentsAndBlanksOnly", "# a\n\n \t\r\n#b", kNoSize},
        Refusal{"NeverSeenAndBadDomain", "DOMAIN_MAX 0 0 0\n", kNoSize, 0, {0, 0, 0}, {0, 0, 0}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    OneD, ParseCubeRefuses,
    ::testing::Values(Refusal{"Alone", "LUT_1D_SIZE 16\n", kOneD},
                      Refusal{"AfterWholeCube", kSize + kEight + " LUT_1D_SIZE", kOneD, 2},
                      Refusal{"LongerKeyword", "LUT_1D_SIZE_X 2\n" + kSize, kOneD}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    DataLine, ParseCubeRefuses,
    ::testing::Values(
        Refusal{"ShortBeforeKeyword", kSize + "1 2\nDOMAIN_MAX 2 2 2\n" + kEight, kData, 2},
        Refusal{"ShortBeforeComment", kSize + kSeven + "1 2\n# 3\n", kData, 2},
        Refusal{"OneNumber", kSize + "1", kData, 2},
        Refusal{"SignOnly", kSize + "0 0 -\n" + kEight, kData, 2},
        Refusal{"PointOnly", kSize + "0 . 0\n" + kEight, kData, 2},
        Refusal{"SignsApart", kSize + "0 0 - 1\n" + kEight, kData, 2},
        Refusal{"NanRunsIntoLetters", kSize + "nanx 0 0\n" + kEight, kData, 2},
        Refusal{"NulInsteadOfNumber", kSize + std::string("0 0 \0 0\n", 8) + kEight, kData, 2},
        Refusal{"NulAtLineStart", kSize + std::string("\0\n", 2) + kEight, kData, 2},
        Refusal{"LaterLinesNotRead", kSize + "x\nDOMAIN_MIN -1 -1 -1\nLUT_3D_SIZE 9\n", kData, 2},
        Refusal{"EarlierDomainKept",
                kSize + "DOMAIN_MIN -1 -2 -3\nDOMAIN_MAX 4 5 6\nx\n",
                kData,
                2,
                {-1, -2, -3},
                {4, 5, 6}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Count, ParseCubeRefuses,
    ::testing::Values(
        Refusal{"NoData", kSize, kCount, 2},
        Refusal{"Size256WithSmallBody", "LUT_3D_SIZE 256\n" + kEight, kCount, 256},
        Refusal{"SecondSizeDiffers", kSize + kEight + "LUT_3D_SIZE 3\n", kCount, 3},
        Refusal{"BadDomainToo", kSize + "DOMAIN_MAX 0 1 1\n", kCount, 2, {0, 0, 0}, {0, 1, 1}}),
    rowName);

INSTANTIATE_TEST_SUITE_P(
    Domain, ParseCubeRefuses,
    ::testing::Values(
        Refusal{"GreenEmpty",
                "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 1 0 1\n" + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {1, 0, 1}},
        Refusal{"RedReversed", "DOMAIN_MIN 2 0 0\n" + kSize + kEight, kDomain, 2, {2, 0, 0}},
        Refusal{"BlueEqual", kSize + kEight + "DOMAIN_MIN 0 0 1\n", kDomain, 2, {0, 0, 1}},
        Refusal{"MinimumNan", "DOMAIN_MIN 0 nan 0\n" + kSize + kEight, kDomain, 2, {0, kNan, 0}},
        Refusal{"MaximumNan",
                "DOMAIN_MAX 1 1 nan\n" + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {1, 1, kNan}},
        Refusal{
            "NumbersMissing", kSize + kEight + "DOMAIN_MAX 2\n", kDomain, 2, {0, 0, 0}, {2, 0, 0}},
        Refusal{"NumbersAreWords",
                "DOMAIN_MAX one\n" + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {0, 0, 0}},
        Refusal{"WordAfterFirst",
                "DOMAIN_MAX 2 x 3\n" + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {2, 0, 0}},
        Refusal{"NulAfterFirst",
                std::string("DOMAIN_MAX 2\0 2 2\n", 18) + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {2, 0, 0}},
        Refusal{"LongerKeyword",
                "DOMAIN_MAXIMUM 2 2 2\n" + kSize + kEight,
                kDomain,
                2,
                {0, 0, 0},
                {0, 0, 0}}),
    rowName);

// A size that no int holds is whatever the platform's own conversion makes of it.
TEST(ParseCube, convertsSizeLikeAtoi_whenFarTooLong) {
    for (const std::string number : {"4294967298", "-4294967294", "99999999999999999999"}) {
        SCOPED_TRACE(number);
        const int expected = std::atoi(number.c_str());
        tw::Lut3D lut;
        EXPECT_EQ(expected == 2,
                  tw::parseCube("LUT_3D_SIZE " + number + "\n" + kEight, lut, nullptr));
        EXPECT_EQ(expected, lut.size);
    }
}

}  // namespace
