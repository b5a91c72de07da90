#include "tintwell_host/sheets/sheet_pictures.h"

#include <gtest/gtest.h>

#include "tests/looks/cubes.h"

namespace program_test {
namespace {

program::Picture pictureOf(int width, int height, const std::vector<float>& greys) {
    program::Picture picture;
    picture.width = width;
    picture.height = height;
    picture.depth = program::Depth::kFloat;
    for (const float grey : greys)
        picture.floats.insert(picture.floats.end(), {grey, grey, grey, 1.0f});
    return picture;
}

TEST(SheetPictures, areFittedFromTheMiddle) {
    const program::Picture wide = pictureOf(6, 2, {0, .5f, 1, 1, .5f, 0, 0, .5f, 1, 1, .5f, 0});
    const program::Picture middle = program::fitted(wide, 2, 2);
    ASSERT_EQ(middle.floats.size(), 16u);
    for (std::size_t at = 0; at < 16; ++at)
        EXPECT_NEAR(middle.floats[at], 1.0f, 1e-4f) << at;
}

TEST(SheetPictures, areGradedByTheAmount) {
    const program::Picture grey = pictureOf(2, 1, {0.0f, 0.5f});
    const tw::Lut3D lut = looks_test::curveOf(3, [](float in) { return 1.0f - in; });
    EXPECT_EQ(program::graded(grey, lut, 1.0f).floats[0], 1.0f);
    EXPECT_EQ(program::graded(grey, lut, 0.25f).floats[0], 0.25f);
    EXPECT_EQ(program::graded(grey, lut, 0.25f).floats[4], 0.5f);
}

TEST(SheetPictures, markWhatClips_andOnlyThat) {
    // Black and white before are none of the grade's doing.
    const program::Picture before = pictureOf(5, 1, {0.0f, 0.2f, 0.5f, 0.8f, 1.0f});
    const program::Picture after = pictureOf(5, 1, {0.0f, -0.1f, 0.5f, 1.2f, 1.0f});
    const program::ClipMap map = program::clipMapOf(before, after);
    EXPECT_DOUBLE_EQ(map.low, 0.2);
    EXPECT_DOUBLE_EQ(map.high, 0.2);
    EXPECT_NE(map.picture.floats[4], map.picture.floats[5]);
    EXPECT_EQ(map.picture.floats[8], map.picture.floats[9]);
    EXPECT_NE(map.picture.floats[12], map.picture.floats[13]);
    EXPECT_EQ(map.picture.floats[16], map.picture.floats[17]);
}

}  // namespace
}  // namespace program_test
