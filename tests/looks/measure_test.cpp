#include "looks/measure.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/looks/pattern_pictures.h"
#include "tests/support/luts.h"

namespace {

using namespace twtest;
using looks::Measurement;

Measurement measured(const FloatPicture& picture, const looks::PatternFrame& frame) {
    Measurement measurement;
    std::string reason;
    EXPECT_TRUE(looks::measurePattern(picture.view(), frame, measurement, reason)) << reason;
    return measurement;
}

Measurement measured(const FloatPicture& picture, int size) {
    return measured(picture, looks::PatternFrame{size, 0, 0});
}

// The look that the engine applies to a picture comes back from its pattern.
tw::Lut3D cubicLook(int size) {
    tw::Lut3D lut = identityLut(size);
    for (float& value : lut.data)
        value = value * value * (3.0f - 2.0f * value) * 1.5f - 0.25f;
    return lut;
}

void negative(float* rgb) {
    for (int channel = 0; channel < 3; ++channel)
        rgb[channel] = 1.0f - rgb[channel];
}

// ---- What comes out

class MeasureSizes : public testing::TestWithParam<int> {};

TEST_P(MeasureSizes, pointsAreThePatternsOwnColours) {
    const int size = GetParam();
    const Measurement measurement = measured(patternPicture(size, 1920, 1080), size);
    ASSERT_EQ(measurement.lut.size, size);
    ASSERT_EQ(measurement.lut.data.size(), tw::latticeFloats(size));
    const float k = 1.0f / static_cast<float>(size - 1);
    for (int blue = 0; blue < size; ++blue) {
        const auto at =
            static_cast<std::size_t>(tw::latticeIndex(size, size / 2, size - 1 - blue, blue));
        EXPECT_EQ(measurement.lut.data[at], k * static_cast<float>(size / 2));
        EXPECT_EQ(measurement.lut.data[at + 1], k * static_cast<float>(size - 1 - blue));
        EXPECT_EQ(measurement.lut.data[at + 2], k * static_cast<float>(blue));
    }
}

INSTANTIATE_TEST_SUITE_P(, MeasureSizes, testing::Values(2, 3, 9, 17, 33));

TEST(Measure, givesTheLookBitByBit_whenThePictureHoldsFloats) {
    const tw::Lut3D look = cubicLook(17);
    const FloatPicture picture = graded(patternPicture(17, 1280, 720),
                                        [&look](float* rgb) { tw::sampleTetra(look, rgb, rgb); });
    EXPECT_TRUE(sameNumbers(look.data, measured(picture, 17).lut.data));
}

TEST(Measure, keepsValuesOutside0And1) {
    const FloatPicture picture =
        graded(patternPicture(5, 320, 180), [](float* rgb) { rgb[0] = rgb[0] * 20.0f - 4.0f; });
    const tw::Lut3D lut = measured(picture, 5).lut;
    EXPECT_EQ(lut.data[0], -4.0f);
    EXPECT_EQ(lut.data[4 * 3], 16.0f);
}

TEST(Measure, tellsTheGridAndWhatItRead) {
    const Measurement measurement = measured(patternPicture(17, 1920, 1080), 17);
    EXPECT_EQ(measurement.columns, 94);
    EXPECT_EQ(measurement.rows, 53);
    EXPECT_EQ(measurement.patchWidth, 20);
    EXPECT_EQ(measurement.patchHeight, 20);
    EXPECT_EQ(measurement.pixelsRead, 100);
    EXPECT_EQ(measurement.lut.id, 0);
    EXPECT_EQ(measurement.lut.name, "");
}

TEST(Measure, takesPatchesOf6Pixels) {
    const Measurement measurement = measured(patternPicture(33, 1524, 858), 33);
    EXPECT_EQ(measurement.patchWidth, 6);
    EXPECT_EQ(measurement.patchHeight, 6);
    EXPECT_EQ(measurement.pixelsRead, 4);
}

TEST(Measure, takesANegativeAsALook) {
    const tw::Lut3D lut = measured(graded(patternPicture(9, 640, 360), negative), 9).lut;
    EXPECT_EQ(lut.data[0], 1.0f);
    EXPECT_EQ(lut.data.back(), 0.0f);
}

TEST(Measure, takesALookOfNothingButJumps) {
    const FloatPicture picture = graded(patternPicture(9, 640, 360), [](float* rgb) {
        for (int channel = 0; channel < 3; ++channel)
            rgb[channel] = rgb[channel] < 0.5f ? 0.0f : 1.0f;
    });
    EXPECT_EQ(measured(picture, 9).lut.data[3 * 3], 0.0f);
    EXPECT_EQ(measured(picture, 9).lut.data[4 * 3], 1.0f);
}

// ---- Robustness

TEST(Measure, doesNotLookAtTheEdgesOfPatches) {
    FloatPicture picture = patternPicture(9, 640, 360);
    const FloatPicture clean = picture;
    // A blur over five pixels.
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 2; x + 2 < picture.width; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                float sum = 0.0f;
                for (int off = -2; off <= 2; ++off)
                    sum += looks::pixelOf(clean.view(), x + off, y)[channel];
                picture.pixel(x, y)[channel] = sum / 5.0f;
            }
        }
    }
    const tw::Lut3D lut = measured(picture, 9).lut;
    const tw::Lut3D expected = measured(clean, 9).lut;
    for (std::size_t i = 0; i < lut.data.size(); ++i)
        ASSERT_NEAR(lut.data[i], expected.data[i], 1e-6f) << i;
}

TEST(Measure, aSpotInAPatchChangesNothing) {
    FloatPicture picture = patternPicture(2, 320, 160);
    for (int y = 30; y < 40; ++y) {
        for (int x = 30; x < 34; ++x)
            picture.pixel(x, y)[1] = 0.3f;
    }
    const Measurement measurement = measured(picture, 2);
    EXPECT_EQ(measurement.lut.data[1], 0.0f);
    EXPECT_GT(measurement.noise[0], 0.04f);
    EXPECT_EQ(measurement.noise[1], 0.0f);
}

TEST(Measure, tellsTheNoiseOfEachPatch) {
    FloatPicture picture = patternPicture(3, 320, 180);
    // The second patch, full red at half: every second pixel 0.02 brighter in green.
    for (int y = 0; y < 45; ++y) {
        for (int x = 46; x < 91; x += 2)
            picture.pixel(x, y)[1] += 0.02f;
    }
    const Measurement measurement = measured(picture, 3);
    ASSERT_EQ(measurement.noise.size(), 27u);
    EXPECT_EQ(measurement.noise[0], 0.0f);
    EXPECT_NEAR(measurement.noise[1], 0.01f, 2e-4f);
    EXPECT_NEAR(measurement.lut.data[4], 0.01f, 2e-3f);
}

TEST(Measure, noiseAveragesOut) {
    const Measurement measurement = measured(noisy(patternPicture(9, 1280, 720), 0.05f, 1), 9);
    const tw::Lut3D expected = measured(patternPicture(9, 1280, 720), 9).lut;
    for (std::size_t i = 0; i < expected.data.size(); ++i)
        ASSERT_NEAR(measurement.lut.data[i], expected.data[i], 0.01f) << i;
    EXPECT_NEAR(measurement.noise[0], 0.029f, 0.005f);
}

// Half of 668 x 721 is 334 x 360 in whole pixels, whose own grid is 27 x 27 and not 26 x 29.
TEST(Measure, findsTheGridOfAScaledPicture) {
    const FloatPicture drawn = patternPicture(9, 668, 721);
    const FloatPicture scaled = rearranged(drawn, 334, 360, [](int& x, int& y) {
        x *= 2;
        y = y * 721 / 360;
    });
    const Measurement measurement = measured(scaled, 9);
    EXPECT_EQ(measurement.columns, 26);
    EXPECT_EQ(measurement.rows, 29);
    EXPECT_TRUE(sameNumbers(measured(drawn, 9).lut.data, measurement.lut.data));
}

TEST(Measure, takesAnUnevenScale_whenItIsToldTheFrame) {
    const FloatPicture drawn = patternPicture(9, 640, 360);
    const FloatPicture scaled = rearranged(drawn, 480, 360, [](int& x, int&) { x = x * 4 / 3; });
    const Measurement measurement = measured(scaled, {9, 640, 360});
    EXPECT_TRUE(sameNumbers(measured(drawn, 9).lut.data, measurement.lut.data));
}

}  // namespace
