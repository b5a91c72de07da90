// sampleTetra: which lattice points it touches, in which order they are summed. A lattice point
// that is touched shows even with weight 0, since 0 times infinity is NaN.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <ostream>
#include <string>

#include "native/src/lut_engine.h"
#include "tests/support/luts.h"
#include "tests/support/row_name.h"

namespace {

using Colour = std::array<float, 3>;

// Corners of the only cell of a two-point LUT, as bits: red 1, green 2, blue 4.
enum Corner : std::size_t {
    kR = 1,
    kG = 2,
    kRG = 3,
    kB = 4,
    kRB = 5,
    kGB = 6,
    kLow = 0,
    kHigh = 7
};

const char* const kCornerNames[] = {"c000",   "red+1",        "green+1",        "red+1 green+1",
                                    "blue+1", "red+1 blue+1", "green+1 blue+1", "c111"};

void setCorner(tw::Lut3D& lut, std::size_t corner, float value) {
    for (std::size_t k = 0; k < 3; ++k)
        lut.data[corner * 3 + k] = value;
}

struct Choice {
    const char* name;
    Colour in;
    Corner first;
    Corner second;
};

const Choice kChoices[] = {
    {"RedGreenBlue", {0.75f, 0.5f, 0.25f}, kR, kRG},
    {"RedBlueGreen", {0.75f, 0.25f, 0.5f}, kR, kRB},
    {"BlueRedGreen", {0.5f, 0.25f, 0.75f}, kB, kRB},
    {"BlueGreenRed", {0.25f, 0.5f, 0.75f}, kB, kGB},
    {"GreenBlueRed", {0.25f, 0.75f, 0.5f}, kG, kGB},
    {"GreenRedBlue", {0.5f, 0.75f, 0.25f}, kG, kRG},
    {"AllEqual", {0.5f, 0.5f, 0.5f}, kG, kRG},
    {"AllZero", {0, 0, 0}, kG, kRG},
    {"AllOne", {1, 1, 1}, kG, kRG},
    {"RedIsGreenAboveBlue", {0.5f, 0.5f, 0.25f}, kG, kRG},
    {"RedIsGreenBelowBlue", {0.5f, 0.5f, 0.75f}, kB, kGB},
    {"RedIsBlueAboveGreen", {0.5f, 0.25f, 0.5f}, kB, kRB},
    {"RedIsBlueBelowGreen", {0.5f, 0.75f, 0.5f}, kG, kRG},
    {"GreenIsBlueBelowRed", {0.75f, 0.5f, 0.5f}, kR, kRB},
    {"GreenIsBlueAboveRed", {0.25f, 0.5f, 0.5f}, kG, kGB},
    {"OnlyRed", {0.5f, 0, 0}, kR, kRB},
    {"OnlyGreen", {0, 0.5f, 0}, kG, kRG},
    {"OnlyBlue", {0, 0, 0.5f}, kB, kGB},
    {"RedAndGreenAtTop", {1, 1, 0.5f}, kG, kRG},
    {"RedAndBlueAtTop", {1, 0.5f, 1}, kB, kRB},
    {"GreenAndBlueAtTop", {0.5f, 1, 1}, kG, kGB},
    {"NotANumber", {std::numeric_limits<float>::quiet_NaN(), 0.5f, 0.5f}, kG, kGB},
    {"BeyondTop", {3, 2, 5}, kG, kRG}};

void PrintTo(const Choice& row, std::ostream* out) {
    *out << row.name;
}

class SamplerChoice : public ::testing::TestWithParam<Choice> {};

TEST_P(SamplerChoice, touchesOnlyItsCorners_whenOneIsInfinite) {
    const Choice& choice = GetParam();
    for (std::size_t corner = 0; corner < 8; ++corner) {
        for (const float special :
             {std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
            tw::Lut3D lut = twtest::scatteredLut(2, 20);
            setCorner(lut, corner, special);
            Colour out{};
            tw::sampleTetra(lut, choice.in.data(), out.data());
            const bool touched = corner == kLow || corner == kHigh || corner == choice.first ||
                                 corner == choice.second;
            for (const float value : out)
                EXPECT_EQ(touched, !std::isfinite(value))
                    << kCornerNames[corner] << " set to " << special << ", got " << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, SamplerChoice, ::testing::ValuesIn(kChoices), twtest::RowName());

TEST(SamplerWeights, areDifferencesOfSortedFractions) {
    struct Row {
        Colour in;
        Corner first, second;
        float w0, w1, w2, w3;
    };
    const Row rows[] = {{{0.875f, 0.5f, 0.25f}, kR, kRG, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.875f, 0.25f, 0.5f}, kR, kRB, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.5f, 0.25f, 0.875f}, kB, kRB, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.25f, 0.5f, 0.875f}, kB, kGB, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.25f, 0.875f, 0.5f}, kG, kGB, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.5f, 0.875f, 0.25f}, kG, kRG, 0.125f, 0.375f, 0.25f, 0.25f},
                        {{0.5f, 0.5f, 0.5f}, kG, kRG, 0.5f, 0, 0, 0.5f},
                        {{0.5f, 0.5f, 0.25f}, kG, kRG, 0.5f, 0, 0.25f, 0.25f}};
    for (const Row& row : rows) {
        tw::Lut3D lut = twtest::constantLut(1e6f);
        setCorner(lut, kLow, 1);
        setCorner(lut, row.first, 10);
        setCorner(lut, row.second, 100);
        setCorner(lut, kHigh, 1000);
        Colour out{};
        tw::sampleTetra(lut, row.in.data(), out.data());
        const float expected = row.w0 + row.w1 * 10 + row.w2 * 100 + row.w3 * 1000;
        EXPECT_TRUE(twtest::sameBits(Colour{expected, expected, expected}, out))
            << row.in[0] << ", " << row.in[1] << ", " << row.in[2];
    }
}

// All four weights are a quarter; the small value survives only when it is added after the two
// large ones have cancelled.
TEST(SamplerSum, startsAtFirstCorner_thenLowSecondHigh) {
    struct Row {
        const char* name;
        float low, first, second, high, expected;
    };
    const Row rows[] = {{"low cancels first", -4e20f, 4e20f, 4, 8, 3},
                        {"second cancels first", 4, 4e20f, -4e20f, 8, 2},
                        {"high cancels first", 4, 4e20f, 16, -4e20f, 0},
                        {"second cancels low", 4e20f, 4, -4e20f, 8, 2},
                        {"high cancels second", 4, 16, 4e20f, -4e20f, 0}};
    for (const Row& row : rows) {
        tw::Lut3D lut = twtest::blankLut(2);
        setCorner(lut, kLow, row.low);
        setCorner(lut, kR, row.first);
        setCorner(lut, kRG, row.second);
        setCorner(lut, kHigh, row.high);
        const Colour in = {0.75f, 0.5f, 0.25f};
        Colour out{};
        tw::sampleTetra(lut, in.data(), out.data());
        EXPECT_TRUE(twtest::sameNumbers(Colour{row.expected, row.expected, row.expected}, out))
            << row.name;
    }
}

// The two products are equal but for sign, so nothing is left of them unless the second one is
// added before it is rounded.
TEST(SamplerSum, roundsAsTheProcessorDoes_whenProductsCancel) {
    const float fraction = 0.7f;
    const float rest = 1.0f - fraction;
    tw::Lut3D lut = twtest::blankLut(2);
    setCorner(lut, kR, rest);
    setCorner(lut, kLow, -fraction);
    const Colour in = {fraction, 0, 0};
    Colour out{};
    tw::sampleTetra(lut, in.data(), out.data());
#if defined(__aarch64__)
    const float expected = std::fma(rest, -fraction, fraction * rest);
    ASSERT_NE(0.0f, expected);
#else
    const float expected = 0.0f;
#endif
    EXPECT_TRUE(twtest::sameNumbers(Colour{expected, expected, expected}, out));
}

}  // namespace
