// apply8 and applyF: the values of single pixels.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "native/src/engine/pixel.h"
#include "native/src/lut_engine.h"
#include "tests/support/float_steps.h"
#include "tests/support/guarded_picture.h"
#include "tests/support/luts.h"

namespace {

using twtest::Picture8;
using twtest::PictureF;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInf = std::numeric_limits<float>::infinity();

// One row of grey bytes 0..255.
Picture8 greyRamp() {
    Picture8 ramp({256, 1});
    for (int x = 0; x < 256; ++x) {
        for (int c = 0; c < 4; ++c)
            ramp.at(x, 0, c) = static_cast<std::uint8_t>(x);
    }
    return ramp;
}

// The byte that a blended value of `value` becomes: over black, a constant LUT is that value.
int quantised(float value) {
    Picture8 src({1, 1});
    Picture8 dst({1, 1});
    for (int c = 0; c < 4; ++c)
        src.at(0, 0, c) = 0;
    tw::apply8(twtest::constantLut(value), src.view(), dst.view(), 1.0f);
    EXPECT_EQ(dst.at(0, 0, 0), dst.at(0, 0, 1));
    EXPECT_EQ(dst.at(0, 0, 0), dst.at(0, 0, 2));
    return dst.at(0, 0, 0);
}

std::array<float, 4> appliedF(const tw::Lut3D& lut, const std::array<float, 4>& rgba,
                              float amount) {
    PictureF src({1, 1});
    PictureF dst({1, 1});
    for (int c = 0; c < 4; ++c)
        src.at(0, 0, c) = rgba[static_cast<std::size_t>(c)];
    tw::applyF(lut, src.view(), dst.view(), amount);
    return {dst.at(0, 0, 0), dst.at(0, 0, 1), dst.at(0, 0, 2), dst.at(0, 0, 3)};
}

TEST(Apply8, keepsEveryByte_whenAmountIsZero) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 1);
    Picture8 src = greyRamp();
    Picture8 dst({256, 1});
    tw::apply8(lut, src.view(), dst.view(), 0.0f);
    for (int x = 0; x < 256; ++x) {
        for (int c = 0; c < 4; ++c)
            ASSERT_EQ(x, dst.at(x, 0, c)) << "byte " << x << ", channel " << c;
    }
}

TEST(Apply8, keepsEveryByte_throughIdentity) {
    const tw::Lut3D lut = twtest::identityLut(33);
    Picture8 src = greyRamp();
    Picture8 dst({256, 1});
    tw::apply8(lut, src.view(), dst.view(), 1.0f);
    for (int x = 0; x < 256; ++x)
        ASSERT_EQ(x, dst.at(x, 0, 1)) << "byte " << x;
}

TEST(Apply8, roundsHalfUpAndClamps_whenQuantising) {
    struct Row {
        float value;
        int byte;
    };
    // The last two: 255 times the value is 0.5 but for the last bit, and 255.5.
    const Row rows[] = {{1.0f, 255},        {0.999f, 255},     {0.998f, 254},       {0.5f, 128},
                        {kNan, 0},          {-kNan, 0},        {-0.1f, 0},          {-1e30f, 0},
                        {3e38f, 255},       {-3e38f, 0},       {1e30f, 255},        {2.0f, 255},
                        {0.0f, 0},          {-0.0f, 0},        {0.0019f, 0},        {0.00197f, 1},
                        {-0.001f, 0},       {-0.00197f, 0},    {0.0058f, 1},        {0.0059f, 2},
                        {0.25f, 64},        {0.75f, 191},      {3.0e9f, 255},       {-3.0e9f, 0},
                        {0.99607843f, 254}, {0x1.0101p-9f, 1}, {0x1.00808p+0f, 255}};
    for (const Row& row : rows) {
        EXPECT_EQ(row.byte, quantised(row.value)) << twtest::shown(row.value);
        EXPECT_EQ(row.byte, tw::quantise8(row.value)) << twtest::shown(row.value);
    }
}

TEST(Apply8, givesLutValue_whenAmountIsOne) {
    tw::Lut3D lut = twtest::blankLut(2);
    for (std::size_t i = 0; i < lut.data.size(); i += 3) {
        lut.data[i] = 0.25f;
        lut.data[i + 1] = 0.5f;
        lut.data[i + 2] = 1.0f;
    }
    Picture8 src = greyRamp();
    Picture8 dst({256, 1});
    tw::apply8(lut, src.view(), dst.view(), 1.0f);
    for (int x = 0; x < 256; ++x) {
        ASSERT_EQ(64, dst.at(x, 0, 0)) << "byte " << x;
        ASSERT_EQ(128, dst.at(x, 0, 1)) << "byte " << x;
        ASSERT_EQ(255, dst.at(x, 0, 2)) << "byte " << x;
        ASSERT_EQ(x, dst.at(x, 0, 3)) << "byte " << x;
    }
}

TEST(Apply8, carriesAlpha_inEveryByteAndOrder) {
    const tw::Lut3D lut = twtest::scatteredLut(3, 2);
    for (const std::int32_t from : {0, 1, 2}) {
        for (const std::int32_t to : {0, 1, 2}) {
            Picture8 src({256, 1, from});
            Picture8 dst({256, 1, to});
            src.scatter(3);
            for (int x = 0; x < 256; ++x)
                src.at(x, 0, 3) = static_cast<std::uint8_t>(x);
            tw::apply8(lut, src.view(), dst.view(), 1.7f);
            for (int x = 0; x < 256; ++x)
                ASSERT_EQ(x, dst.at(x, 0, 3)) << "orders " << from << " to " << to;
        }
    }
}

class ApplyAmount : public ::testing::TestWithParam<float> {};

TEST_P(ApplyAmount, equalsSteps_forBytes) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 4);
    Picture8 src({61, 40, tw::kOrderBGRA});
    Picture8 dst({61, 40, tw::kOrderARGB});
    src.scatter(5);
    tw::apply8(lut, src.view(), dst.view(), GetParam());
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 61; ++x) {
            const float in[3] = {twtest::fromByteStep(src.at(x, y, 0)),
                                 twtest::fromByteStep(src.at(x, y, 1)),
                                 twtest::fromByteStep(src.at(x, y, 2))};
            const auto out = twtest::gradeSteps(lut, in, GetParam());
            for (int c = 0; c < 3; ++c) {
                ASSERT_EQ(twtest::toByteStep(out[static_cast<std::size_t>(c)]), dst.at(x, y, c))
                    << "x " << x << ", y " << y << ", channel " << c << ", from "
                    << int{src.at(x, y, c)};
            }
            ASSERT_EQ(src.at(x, y, 3), dst.at(x, y, 3)) << "x " << x << ", y " << y;
        }
    }
}

TEST_P(ApplyAmount, equalsSteps_forFloats) {
    tw::Lut3D lut = twtest::scatteredLut(17, 6);
    twtest::setDomain(lut, 2, -0.125f, 1.375f);
    PictureF src({61, 40, tw::kOrderBGRA});
    PictureF dst({61, 40, tw::kOrderRGBA});
    src.scatter(7);
    tw::applyF(lut, src.view(), dst.view(), GetParam());
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 61; ++x) {
            const float in[3] = {src.at(x, y, 0), src.at(x, y, 1), src.at(x, y, 2)};
            const float* out = &dst.at(x, y, 0);
            ASSERT_TRUE(twtest::sameNumbers(twtest::gradeSteps(lut, in, GetParam()), {out, 3}))
                << "x " << x << ", y " << y << ", from " << twtest::shown(in[0]) << ", "
                << twtest::shown(in[1]) << ", " << twtest::shown(in[2]);
            ASSERT_EQ(twtest::bitsOf(src.at(x, y, 3)), twtest::bitsOf(dst.at(x, y, 3)));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ApplyAmount,
                         ::testing::Values(0.0f, 0.3f, 0.5f, 1.0f, 1.7f, -0.4f, kNan),
                         [](const auto& row) { return "Row" + std::to_string(row.index); });

TEST(ApplyF, blends_betweenInputAndLut) {
    const tw::Lut3D lut = twtest::constantLut(0.5f);
    const std::array<float, 4> in = {0.25f, -1.0f, 4.0f, 0.75f};
    EXPECT_TRUE(twtest::sameBits(in, appliedF(lut, in, 0.0f)));
    EXPECT_TRUE(
        twtest::sameBits(std::array{0.375f, -0.25f, 2.25f, 0.75f}, appliedF(lut, in, 0.5f)));
    EXPECT_TRUE(twtest::sameBits(std::array{0.5f, 0.5f, 0.5f, 0.75f}, appliedF(lut, in, 1.0f)));
    EXPECT_TRUE(twtest::sameBits(std::array{0.75f, 2.0f, -3.0f, 0.75f}, appliedF(lut, in, 2.0f)));
}

TEST(ApplyF, doesNotClamp_farValues) {
    const std::array<float, 4> in = {0, 0, 0, 1};
    EXPECT_TRUE(twtest::sameBits(std::array{-7.5f, -7.5f, -7.5f, 1.0f},
                                 appliedF(twtest::constantLut(-7.5f), in, 1.0f)));
    EXPECT_TRUE(twtest::sameBits(std::array{1e6f, 1e6f, 1e6f, 1.0f},
                                 appliedF(twtest::constantLut(1e6f), in, 1.0f)));
}

TEST(ApplyF, followsSteps_forInputsThatAreNotFinite) {
    const tw::Lut3D lut = twtest::scatteredLut(5, 8);
    const float values[] = {kNan, kInf, -kInf, -0.0f, 1e-40f, 3e38f, 0.5f};
    for (const float r : values) {
        for (const float g : values) {
            const float in[3] = {r, g, 0.25f};
            const auto out = appliedF(lut, {r, g, 0.25f, 1}, 0.5f);
            EXPECT_TRUE(twtest::sameNumbers(twtest::gradeSteps(lut, in, 0.5f), {out.data(), 3}))
                << twtest::shown(r) << ", " << twtest::shown(g);
        }
    }
}

// Alpha is copied bit for bit, even a signalling NaN.
TEST(ApplyF, carriesAlphaBits_asTheyAre) {
    const tw::Lut3D lut = twtest::scatteredLut(5, 9);
    const std::vector<std::uint32_t> alphas = {0x00000000, 0x80000000, 0x3F800000, 0x7F800000,
                                               0xFF800000, 0x7FC00000, 0x7FC12345, 0xFFC54321,
                                               0x7F812345, 0xFFA00001, 0x00000001, 0x807FFFFF};
    for (const std::int32_t order : {0, 1, 2}) {
        PictureF src({static_cast<int>(alphas.size()), 1, order});
        PictureF dst({static_cast<int>(alphas.size()), 1, tw::kOrderARGB});
        src.scatter(10);
        for (std::size_t i = 0; i < alphas.size(); ++i)
            src.at(static_cast<int>(i), 0, 3) = twtest::fromBits(alphas[i]);
        tw::applyF(lut, src.view(), dst.view(), 0.7f);
        for (std::size_t i = 0; i < alphas.size(); ++i)
            EXPECT_EQ(alphas[i], twtest::bitsOf(dst.at(static_cast<int>(i), 0, 3)))
                << "alpha " << i << ", order " << order;
    }
}

}  // namespace
