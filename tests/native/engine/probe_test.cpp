// probeGrid and probeColour: the geometry and the colours of the calibration pattern.
#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <utility>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/native/engine/probe_frames.h"
#include "tests/support/float_check.h"

namespace {

using twtest::Colour;
using twtest::kProbeFrames;
using twtest::ProbeFrame;

Colour colourAt(int n, int cols, int rows, int width, int height, int x, int y) {
    Colour out = {-1, -1, -1};
    tw::probeColour(n, cols, rows, width, height, x, y, out.data());
    return out;
}

TEST(ProbeGrid, followsTable) {
    struct Row {
        int n, width, height, cols, rows;
    };
    const Row table[] = {{2, 1920, 1080, 4, 2},
                         {17, 1920, 1080, 94, 53},
                         {17, 1000, 1000, 71, 70},
                         {33, 3840, 2160, 253, 143},
                         {64, 1920, 1080, 683, 384},
                         {2, 1000, 1000, 3, 3},
                         {4, 100, 100, 8, 8},
                         {2, 2, 1, 4, 2},
                         {2, 1, 2, 2, 4}};
    for (const Row& row : table) {
        int cols = -1;
        int rows = -1;
        tw::probeGrid(row.n, row.width, row.height, &cols, &rows);
        EXPECT_EQ(row.cols, cols) << row.n << ", " << row.width << " x " << row.height;
        EXPECT_EQ(row.rows, rows) << row.n << ", " << row.width << " x " << row.height;
    }
}

TEST(ProbeGrid, hasAsManyColumnsAsAnIntHolds_atMost) {
    constexpr int kMost = std::numeric_limits<int>::max();
    int cols = -1;
    int rows = -1;
    tw::probeGrid(100000, kMost, 1, &cols, &rows);
    EXPECT_EQ(kMost, cols);
    EXPECT_EQ(465662, rows);
}

TEST(ProbeGrid, takesAspectOne_withoutHeight) {
    for (const int height : {0, -1, -1080, -2147483647 - 1}) {
        for (const int width : {1920, 0, -7}) {
            int cols = -1;
            int rows = -1;
            tw::probeGrid(2, width, height, &cols, &rows);
            EXPECT_EQ(3, cols) << width << " x " << height;
            EXPECT_EQ(3, rows) << width << " x " << height;
        }
    }
}

TEST(ProbeGrid, hasOneColumn_withoutWidth) {
    for (const int width : {0, -1, -1920}) {
        int cols = -1;
        int rows = -1;
        tw::probeGrid(17, width, 1080, &cols, &rows);
        EXPECT_EQ(1, cols) << width;
        EXPECT_EQ(4913, rows) << width;
    }
}

TEST(ProbeGrid, holdsEveryPatch_withinOneRowMore) {
    for (int n = 2; n <= 64; ++n) {
        for (const ProbeFrame& frame : kProbeFrames) {
            int cols = 0;
            int rows = 0;
            tw::probeGrid(n, frame.width, frame.height, &cols, &rows);
            const int patches = n * n * n;
            EXPECT_GE(cols * rows, patches) << n << " steps, frame of " << frame;
            EXPECT_LT(cols * (rows - 1), patches) << n << " steps, frame of " << frame;
        }
    }
}

TEST(ProbeColour, numbersEightPatches_redFastest) {
    const Colour expected[] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0},
                               {0, 0, 1}, {1, 0, 1}, {0, 1, 1}, {1, 1, 1}};
    for (int patch = 0; patch < 8; ++patch) {
        const int x = patch % 4 * 480;
        const int y = patch / 4 * 540;
        for (const auto& [dx, dy] : std::vector<std::pair<int, int>>{{0, 0}, {479, 539}, {9, 300}})
            EXPECT_TRUE(
                twtest::sameBits(expected[patch], colourAt(2, 4, 2, 1920, 1080, x + dx, y + dy)))
                << "patch " << patch << ", " << dx << ", " << dy;
    }
}

TEST(ProbeColour, countsLevels_inSinglePrecision) {
    for (const int n : {2, 3, 17, 33, 64}) {
        const float step = 1.0f / static_cast<float>(n - 1);
        for (int patch = 0; patch < n * n * n; ++patch) {
            const Colour expected = {step * static_cast<float>(patch % n),
                                     step * static_cast<float>(patch / n % n),
                                     step * static_cast<float>(patch / (n * n))};
            ASSERT_TRUE(
                twtest::sameBits(expected, colourAt(n, n * n * n, 1, n * n * n, 1, patch, 0)))
                << n << ", patch " << patch;
        }
    }
}

TEST(ProbeColour, isWhiteInLastPatch_thenBlack) {
    struct Row {
        int n, cols, rows;
    };
    for (const Row& row : {Row{2, 3, 3}, Row{17, 94, 53}, Row{33, 253, 143}, Row{64, 683, 384}}) {
        const int last = row.n * row.n * row.n - 1;
        for (int cell = last - 1; cell < row.cols * row.rows; ++cell) {
            const Colour out = colourAt(row.n, row.cols, row.rows, row.cols, row.rows,
                                        cell % row.cols, cell / row.cols);
            if (cell == last) {
                EXPECT_TRUE(twtest::sameBits(Colour{1, 1, 1}, out)) << row.n;
            } else if (cell > last) {
                EXPECT_TRUE(twtest::sameBits(Colour{0, 0, 0}, out)) << row.n << ", cell " << cell;
            } else {
                EXPECT_NE(1.0f, out[0]) << row.n;
                EXPECT_EQ(1.0f, out[2]) << row.n;
            }
        }
    }
}

// k x (n - 1) rounds to just below 1 for these sizes. The rule holds there too: what the panel
// measures is what the formula says, and in 8 bits it is white all the same.
TEST(ProbeColour, isAUnitBelowWhiteInLastPatch_for42And48And56And62) {
    for (int n = 2; n <= 64; ++n) {
        const bool below = n == 42 || n == 48 || n == 56 || n == 62;
        const float white = below ? 0.99999994f : 1.0f;
        const int patches = n * n * n;
        const Colour last = colourAt(n, patches, 1, patches, 1, patches - 1, 0);
        EXPECT_TRUE(twtest::sameBits(Colour{white, white, white}, last)) << n;
        EXPECT_EQ(1.0f / static_cast<float>(n - 1) * static_cast<float>(n - 1), last[0]) << n;
    }
}

TEST(ProbeColour, takesFirstColumnOrRow_withoutWidthOrHeight) {
    EXPECT_TRUE(
        twtest::sameBits(colourAt(3, 6, 5, 60, 50, 0, 33), colourAt(3, 6, 5, 0, 50, 44, 33)));
    EXPECT_TRUE(
        twtest::sameBits(colourAt(3, 6, 5, 60, 50, 44, 0), colourAt(3, 6, 5, 60, 0, 44, 33)));
    EXPECT_TRUE(twtest::sameBits(Colour{0, 0, 0}, colourAt(3, 6, 5, 0, 0, 44, 33)));
}

TEST(ProbeColour, findsPatch_inHugeFrame) {
    constexpr int kSide = 2000000000;
    const Colour last = colourAt(64, 683, 384, kSide, kSide, kSide - 1, 0);
    const float step = 1.0f / 63.0f;
    EXPECT_TRUE(twtest::sameBits(Colour{step * (682 % 64), step * (682 / 64), 0}, last));
    EXPECT_TRUE(twtest::sameBits(
        Colour{step * (100 * 683 % 64), step * (100 * 683 / 64 % 64), step * (100 * 683 / 4096)},
        colourAt(64, 683, 384, kSide, kSide, 0, 522000000)));
}

TEST(ProbeColour, givesUniformPatches_thatDifferByOnePixelAtMost) {
    int cols = 0;
    int rows = 0;
    constexpr int kWidth = 331;
    constexpr int kHeight = 217;
    tw::probeGrid(3, kWidth, kHeight, &cols, &rows);
    std::map<std::vector<float>, int> pixelsOf;
    for (int i = 0; i < kWidth * kHeight; ++i) {
        const Colour c = colourAt(3, cols, rows, kWidth, kHeight, i % kWidth, i / kWidth);
        ++pixelsOf[{c[0], c[1], c[2]}];
    }
    EXPECT_EQ(27U, pixelsOf.size());
    const int narrow = kWidth / cols;
    const int low = kHeight / rows;
    for (const auto& [colour, pixels] : pixelsOf) {
        if (colour == std::vector<float>{0, 0, 0}) continue;  // shared with the cells left over
        EXPECT_GE(pixels, narrow * low);
        EXPECT_LE(pixels, (narrow + 1) * (low + 1));
    }
}

}  // namespace
