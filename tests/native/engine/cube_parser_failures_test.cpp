// parseCube: every refusal, with its whole message and the state that it leaves behind.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <string>

#include "native/src/lut_engine.h"
#include "tests/native/engine/cube_rows.h"
#include "tests/support/cube_messages.h"
#include "tests/support/luts.h"

namespace twtest {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

const std::string kSize = "LUT_3D_SIZE 2\n";
const std::string kSeven = "0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n0 0 0\n";
const std::string kEight = kSeven + "0 0 0\n";

// A record of which every field must be reset.
tw::Lut3D usedLut() {
    tw::Lut3D lut = scatteredLut(3, 2);
    lut.id = 5;
    lut.probe = 6;
    lut.name = "old";
    setDomain(lut, 0, -8, 8);
    return lut;
}

TEST_P(CubeText, hasItsOutcome) {
    const auto& [name, text, outcome] = GetParam();
    const bool isTaken = outcome.message == nullptr;
    tw::Lut3D lut = usedLut();
    std::string message = "untouched";
    EXPECT_EQ(tw::parseCube(text, lut, &message), isTaken);
    EXPECT_EQ(message, isTaken ? "untouched" : outcome.message);
    EXPECT_TRUE(sameLut(outcome.lut, lut));
    if (!isTaken) {
        EXPECT_EQ(0U, lut.data.capacity());
    }
    EXPECT_EQ(tw::parseCube(text, lut, nullptr), isTaken) << "without an error string";
}

INSTANTIATE_TEST_SUITE_P(
    SizeLine, CubeText,
    ::testing::Values(CubeRow{"One", "LUT_3D_SIZE 1\n" + kEight, refused(kRange, 1)},
                      CubeRow{"TwoHundredFiftySeven", "LUT_3D_SIZE 257\n", refused(kRange, 257)},
                      CubeRow{"Zero", "LUT_3D_SIZE 0\n", refused(kRange, 0)},
                      CubeRow{"Negative", "LUT_3D_SIZE -2\n", refused(kRange, -2)},
                      CubeRow{"Missing", "LUT_3D_SIZE", refused(kRange, 0)},
                      CubeRow{"LongerKeyword", "LUT_3D_SIZES 2\n" + kEight, refused(kRange, 0)},
                      CubeRow{"NulBeforeNumber", std::string("LUT_3D_SIZE\0 2\n", 15) + kEight,
                              refused(kRange, 0)},
                      CubeRow{"SecondOutOfRange", kSize + kEight + "LUT_3D_SIZE 300\n",
                              refused(kRange, 300)},
                      CubeRow{"NeverSeen", kEight, refused(kNoSize, 0)},
                      CubeRow{"EmptyText", "", refused(kNoSize, 0)},
                      CubeRow{"CommentsAndBlanksOnly", "# a\n\n \t\r\n#b", refused(kNoSize, 0)},
                      CubeRow{"NeverSeenAndBadDomain", "DOMAIN_MAX 0 0 0\n",
                              withDomain(refused(kNoSize, 0), {0, 0, 0}, {0, 0, 0})}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    OneD, CubeText,
    ::testing::Values(CubeRow{"Alone", "LUT_1D_SIZE 16\n", refused(kOneD, 0)},
                      CubeRow{"AfterWholeCube", kSize + kEight + " LUT_1D_SIZE", refused(kOneD)},
                      CubeRow{"LongerKeyword", "LUT_1D_SIZE_X 2\n" + kSize, refused(kOneD, 0)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    DataLine, CubeText,
    ::testing::Values(
        CubeRow{"ShortBeforeKeyword", kSize + "1 2\nDOMAIN_MAX 2 2 2\n" + kEight, refused(kData)},
        CubeRow{"ShortBeforeComment", kSize + kSeven + "1 2\n# 3\n", refused(kData)},
        CubeRow{"OneNumber", kSize + "1", refused(kData)},
        CubeRow{"SignOnly", kSize + "0 0 -\n" + kEight, refused(kData)},
        CubeRow{"PointOnly", kSize + "0 . 0\n" + kEight, refused(kData)},
        CubeRow{"SignsApart", kSize + "0 0 - 1\n" + kEight, refused(kData)},
        CubeRow{"NanRunsIntoLetters", kSize + "nanx 0 0\n" + kEight, refused(kData)},
        CubeRow{"NulInsteadOfNumber", kSize + std::string("0 0 \0 0\n", 8) + kEight,
                refused(kData)},
        CubeRow{"NulAtLineStart", kSize + std::string("\0\n", 2) + kEight, refused(kData)},
        CubeRow{"LaterLinesNotRead", kSize + "x\nDOMAIN_MIN -1 -1 -1\nLUT_3D_SIZE 9\n",
                refused(kData)},
        CubeRow{"EarlierDomainKept", kSize + "DOMAIN_MIN -1 -2 -3\nDOMAIN_MAX 4 5 6\nx\n",
                withDomain(refused(kData), {-1, -2, -3}, {4, 5, 6})}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Count, CubeText,
    ::testing::Values(
        CubeRow{"NoData", kSize, refused(kCount)},
        CubeRow{"Size256WithSmallBody", "LUT_3D_SIZE 256\n" + kEight, refused(kCount, 256)},
        CubeRow{"SecondSizeDiffers", kSize + kEight + "LUT_3D_SIZE 3\n", refused(kCount, 3)},
        CubeRow{"BadDomainToo", kSize + "DOMAIN_MAX 0 1 1\n",
                withDomain(refused(kCount), {0, 0, 0}, {0, 1, 1})}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Domain, CubeText,
    ::testing::Values(CubeRow{"GreenEmpty", "DOMAIN_MIN 0 0 0\nDOMAIN_MAX 1 0 1\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {1, 0, 1})},
                      CubeRow{"RedReversed", "DOMAIN_MIN 2 0 0\n" + kSize + kEight,
                              withDomain(refused(kDomain), {2, 0, 0}, {1, 1, 1})},
                      CubeRow{"BlueEqual", kSize + kEight + "DOMAIN_MIN 0 0 1\n",
                              withDomain(refused(kDomain), {0, 0, 1}, {1, 1, 1})},
                      CubeRow{"MinimumNan", "DOMAIN_MIN 0 nan 0\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, kNan, 0}, {1, 1, 1})},
                      CubeRow{"MaximumNan", "DOMAIN_MAX 1 1 nan\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {1, 1, kNan})},
                      CubeRow{"NumbersMissing", kSize + kEight + "DOMAIN_MAX 2\n",
                              withDomain(refused(kDomain), {0, 0, 0}, {2, 0, 0})},
                      CubeRow{"NumbersAreWords", "DOMAIN_MAX one\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {0, 0, 0})},
                      CubeRow{"WordAfterFirst", "DOMAIN_MAX 2 x 3\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {2, 0, 0})},
                      CubeRow{"NulAfterFirst",
                              std::string("DOMAIN_MAX 2\0 2 2\n", 18) + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {2, 0, 0})},
                      CubeRow{"LongerKeyword", "DOMAIN_MAXIMUM 2 2 2\n" + kSize + kEight,
                              withDomain(refused(kDomain), {0, 0, 0}, {0, 0, 0})}),
    RowName());

// A size beyond int is what the platform's atoi gives.
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
}  // namespace twtest
