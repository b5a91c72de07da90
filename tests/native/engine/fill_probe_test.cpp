// fillProbe8 and fillProbeF: the calibration pattern in pictures.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "native/src/engine/parallel_rows.h"
#include "native/src/lut_engine.h"
#include "tests/native/engine/probe_frames.h"
#include "tests/support/float_check.h"
#include "tests/support/float_steps.h"
#include "tests/support/guarded_picture.h"

namespace {

using twtest::Colour;
using twtest::kProbeFrames;
using twtest::ProbeFrame;

// What probeColour gives for a pixel of the frame.
Colour colourIn(const ProbeFrame& frame, int x, int y) {
    int cols = 0;
    int rows = 0;
    tw::probeGrid(frame.n, frame.width, frame.height, &cols, &rows);
    Colour out = {-1, -1, -1};
    tw::probeColour(frame.n, cols, rows, frame.width, frame.height, x, y, out.data());
    return out;
}

// Draws the pattern into every frame, in every order and an unknown one, and compares each pixel
// with what probeColour gives.
template <class Picture, class View>
void expectEveryPixel(void (*fill)(int n, const View& view), int padding,
                      void (*expectPixel)(Picture&, int x, int y, const Colour&)) {
    for (const std::int32_t order : {0, 1, 2, 9}) {
        for (const ProbeFrame& frame : kProbeFrames) {
            SCOPED_TRACE(::testing::Message() << frame << ", order " << order);
            Picture picture({frame.width, frame.height, order, padding, order == 1});
            fill(frame.n, picture.view());
            for (int i = 0; i < frame.width * frame.height; ++i) {
                const int x = i % frame.width;
                const int y = i / frame.width;
                expectPixel(picture, x, y, colourIn(frame, x, y));
                if (::testing::Test::HasFailure()) FAIL() << "at " << x << ", " << y;
            }
            ASSERT_TRUE(picture.guardsIntact());
        }
    }
}

TEST(FillProbeF, equalsProbeColour_atEveryPixel) {
    expectEveryPixel<twtest::PictureF>(
        tw::fillProbeF, 4, [](twtest::PictureF& picture, int x, int y, const Colour& c) {
            const std::array<float, 4> got = {picture.at(x, y, 0), picture.at(x, y, 1),
                                              picture.at(x, y, 2), picture.at(x, y, 3)};
            EXPECT_TRUE(twtest::sameBits(std::array{c[0], c[1], c[2], 1.0f}, got));
        });
}

TEST(FillProbe8, equalsQuantisedProbeColour_atEveryPixel) {
    expectEveryPixel<twtest::Picture8>(
        tw::fillProbe8, 3, [](twtest::Picture8& picture, int x, int y, const Colour& c) {
            for (int k = 0; k < 3; ++k) {
                EXPECT_EQ(twtest::toByteStep(c[static_cast<std::size_t>(k)]), picture.at(x, y, k));
            }
            EXPECT_EQ(255, picture.at(x, y, 3));
        });
}

TEST(FillProbe8, showsOnlyEnds_forTwoSteps) {
    twtest::Picture8 picture({4, 2});
    tw::fillProbe8(2, picture.view());
    const int expected[8][3] = {{0, 0, 0},   {255, 0, 0},   {0, 255, 0},   {255, 255, 0},
                                {0, 0, 255}, {255, 0, 255}, {0, 255, 255}, {255, 255, 255}};
    for (int patch = 0; patch < 8; ++patch) {
        for (int c = 0; c < 3; ++c)
            EXPECT_EQ(expected[patch][c], picture.at(patch % 4, patch / 4, c)) << patch;
    }
}

TEST(FillProbe8, rounds128_forMiddleOfThreeSteps) {
    twtest::Picture8 picture({27, 1});
    tw::fillProbe8(3, picture.view());
    int cols = 0;
    int rows = 0;
    tw::probeGrid(3, 27, 1, &cols, &rows);
    ASSERT_EQ(27, cols);
    for (int x = 0; x < 27; ++x)
        EXPECT_EQ((std::array{0, 128, 255}[static_cast<std::size_t>(x % 3)]), picture.at(x, 0, 0));
}

TEST(FillProbe8, showsWhiteInLastPatch_forEverySize) {
    for (int n = 2; n <= 64; ++n) {
        // A pixel a patch.
        twtest::Picture8 picture({n * n, n});
        tw::fillProbe8(n, picture.view());
        for (int c = 0; c < 4; ++c)
            EXPECT_EQ(255, picture.at(n * n - 1, n - 1, c)) << n << ", channel " << c;
    }
}

TEST(FillProbe, givesSamePicture_onAnyNumberOfThreads) {
    for (const int rows : {31, 32, 100}) {
        tw::setHardwareThreads(1);
        twtest::Picture8 alone({23, rows});
        tw::fillProbe8(5, alone.view());
        tw::setHardwareThreads(8);
        twtest::Picture8 shared({23, rows});
        tw::fillProbe8(5, shared.view());
        for (int i = 0; i < 23 * rows * 4; ++i)
            ASSERT_EQ(alone.at(i / 4 % 23, i / 92, i % 4), shared.at(i / 4 % 23, i / 92, i % 4))
                << rows << " rows, channel " << i;
    }
}

TEST(FillProbe, touchesNothing_whenImageIsEmpty) {
    const int sizes[][2] = {{0, 5}, {5, 0}, {-3, 5}, {5, -3}, {0, 0}, {-2147483647 - 1, 2}};
    for (const auto& size : sizes) {
        twtest::Picture8 bytes({5, 5});
        twtest::PictureF floats({5, 5});
        tw::Image8 empty8 = bytes.view();
        tw::ImageF emptyF = floats.view();
        empty8.width = emptyF.width = size[0];
        empty8.height = emptyF.height = size[1];
        tw::fillProbe8(3, empty8);
        tw::fillProbeF(3, emptyF);
        EXPECT_TRUE(bytes.untouchedOutside(0, 0)) << size[0] << " x " << size[1];
        EXPECT_TRUE(floats.untouchedOutside(0, 0)) << size[0] << " x " << size[1];
    }
}

}  // namespace
