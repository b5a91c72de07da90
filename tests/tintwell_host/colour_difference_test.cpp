#include "tintwell_host/sheets/colour_difference.h"

#include <gtest/gtest.h>

namespace program_test {
namespace {

TEST(ColourDifference, ofTheSameColoursIsNone) {
    const program::Difference none = program::differenceOf({0.1f, 0.5f, 0.9f}, {0.1f, 0.5f, 0.9f});
    EXPECT_EQ(none.steps.largest, 0.0);
    EXPECT_EQ(none.largestDelta, 0.0);
}

TEST(ColourDifference, countsStepsOf8Bits) {
    const program::Difference some =
        program::differenceOf({0, 0, 0, 0, 0, 0}, {1, 0, 0, 0, -0.5f, 0});
    EXPECT_DOUBLE_EQ(some.steps.largest, 255.0);
    EXPECT_DOUBLE_EQ(some.steps.mean, 255.0 * 1.5 / 6.0);
}

// Black and white are 100 apart, and a grey is as far from black as its lightness makes it.
TEST(ColourDifference, ofBlackAndWhiteIs100) {
    const program::Difference all =
        program::differenceOf({0, 0, 0, 0.5f, 0.5f, 0.5f}, {1, 1, 1, 0.5f, 0.5f, 0.5f});
    EXPECT_NEAR(all.largestDelta, 100.0, 0.01);
    EXPECT_NEAR(all.meanDelta, 50.0, 0.01);
    ASSERT_EQ(all.deltas.size(), 2u);
    EXPECT_NEAR(all.deltas[1], 0.0f, 1e-4f);
}

TEST(ColourDifference, isLimitedToWhatAScreenShows) {
    EXPECT_NEAR(program::differenceOf({1, 1, 1}, {4, 4, 4}).largestDelta, 0.0, 1e-6);
    EXPECT_NEAR(program::differenceOf({0, 0, 0}, {-1, -1, -1}).largestDelta, 0.0, 1e-6);
}

// sRGB's red and green in CIE Lab (D50) are 54.29 80.81 69.89 and 87.82 -79.29 80.99.
TEST(ColourDifference, ofRedAndGreenIsTheStandardsNumber) {
    EXPECT_NEAR(program::differenceOf({1, 0, 0}, {0, 1, 0}).largestDelta, 84.3, 0.2);
}

}  // namespace
}  // namespace program_test
