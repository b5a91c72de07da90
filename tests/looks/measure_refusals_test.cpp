// What is no pattern of the given size, and what the user is told.
#include <gtest/gtest.h>

#include <limits>

#include "looks/measure.h"
#include "looks/pattern/rejection.h"
#include "tests/looks/pattern_pictures.h"

namespace {

using namespace twtest;

std::string refusal(const FloatPicture& picture, int size, int frameWidth = 0,
                    int frameHeight = 0) {
    looks::Measurement measurement;
    std::string reason;
    const looks::PatternFrame frame{size, frameWidth, frameHeight};
    EXPECT_FALSE(looks::measurePattern(picture.view(), frame, measurement, reason));
    return reason;
}

std::string notThere(int size) {
    return "its patches are not where those of a pattern of " + std::to_string(size) +
           " steps are: it is none, or cropped, turned, or scaled to another shape";
}

// Colours that only the place tells, softly.
FloatPicture landscape(int width, int height) {
    FloatPicture picture = blankPicture(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const float across = static_cast<float>(x) / static_cast<float>(width);
            const float down = static_cast<float>(y) / static_cast<float>(height);
            float* pixel = picture.pixel(x, y);
            pixel[0] = across;
            pixel[1] = down;
            pixel[2] = (across + down) / 2.0f;
        }
    }
    return picture;
}

TEST(MeasureRefuses, anEmptyPicture) {
    EXPECT_EQ(refusal({0, 0, {}}, 9), "it is empty");
    EXPECT_EQ(refusal({-3, 2, {}}, 9), "it is empty");
}

TEST(MeasureRefuses, aPictureOfOneColour) {
    const std::string said = "it is of one colour, or nearly so: that is no calibration pattern";
    EXPECT_EQ(refusal(blankPicture(320, 180, 0.5f), 2), said);
    EXPECT_EQ(refusal(noisy(blankPicture(320, 180, 0.5f), 0.01f, 3), 2), said);
    const float none = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(refusal(blankPicture(320, 180, none), 2), said);
}

TEST(MeasureRefuses, patchesOf5PixelsAndNamesTheFrame) {
    EXPECT_EQ(refusal(patternPicture(33, 1523, 857), 33),
              "its patches would be 6x5 pixels, and must be 6x6 or more: a pattern of 33 steps "
              "needs a frame of 1524x858 or more");
    EXPECT_EQ(refusal(patternPicture(64, 1920, 1080), 64),
              "its patches would be 2x2 pixels, and must be 6x6 or more: a pattern of 64 steps "
              "needs a frame of 4099x2306 or more");
}

TEST(MeasureRefuses, aShapeForWhichThereIsNoFrame) {
    const int widest = std::numeric_limits<int>::max();
    EXPECT_EQ(looks::whyTooSmall({nullptr, widest, 1}, looks::gridOf(64, widest, 1)),
              "its patches would be 90x1 pixels, and must be 6x6 or more");
}

TEST(MeasureRefuses, anotherSizeAndNamesIt) {
    EXPECT_EQ(refusal(patternPicture(17, 1280, 720), 9),
              "it shows a pattern of 17 steps, not of 9");
    EXPECT_EQ(refusal(patternPicture(9, 1280, 720), 17),
              "it shows a pattern of 9 steps, not of 17");
    EXPECT_EQ(refusal(patternPicture(16, 1280, 720), 17),
              "it shows a pattern of 16 steps, not of 17");
}

TEST(MeasureRefuses, barsAboveAndBelow) {
    const FloatPicture barred =
        rearranged(patternPicture(9, 640, 360), 640, 420, [](int&, int& y) { y -= 30; });
    EXPECT_EQ(refusal(barred, 9),
              "it has bars of one colour (30 rows at the top, 30 at the bottom): give the picture "
              "without them");
}

TEST(MeasureRefuses, barsLeftAndRight) {
    const FloatPicture barred = rearranged(
        patternPicture(9, 640, 360), 700, 360, [](int& x, int&) { x -= 20; }, 1.0f);
    EXPECT_EQ(refusal(barred, 9),
              "it has bars of one colour (20 columns at the left, 40 at the right): give the "
              "picture without them");
}

TEST(MeasureRefuses, aPartOfThePattern) {
    const FloatPicture part = rearranged(patternPicture(9, 640, 360), 600, 340, [](int& x, int& y) {
        x += 20;
        y += 10;
    });
    EXPECT_EQ(refusal(part, 9), notThere(9));
}

TEST(MeasureRefuses, aWrongFrame) {
    EXPECT_EQ(refusal(patternPicture(9, 640, 360), 9, 360, 640),
              "the pattern was not drawn in a frame of that shape");
}

TEST(MeasureRefuses, thePictureTurnedByAQuarter) {
    const FloatPicture turned =
        rearranged(patternPicture(9, 640, 360), 360, 640, [](int& x, int& y) {
            const int column = x;
            x = y;
            y = 359 - column;
        });
    EXPECT_EQ(refusal(turned, 9), notThere(9));
}

TEST(MeasureRefuses, mirroredPictures) {
    const auto acrossOf = [](int& x, int&) { x = 639 - x; };
    const auto downOf = [](int&, int& y) { y = 359 - y; };
    const auto halfTurn = [](int& x, int& y) {
        x = 639 - x;
        y = 359 - y;
    };
    for (const int size : {4, 9, 13}) {
        const FloatPicture pattern = patternPicture(size, 640, 360);
        EXPECT_EQ(refusal(rearranged(pattern, 640, 360, acrossOf), size),
                  "the picture is mirrored left to right");
        EXPECT_EQ(refusal(rearranged(pattern, 640, 360, downOf), size),
                  "the picture is mirrored top to bottom");
        EXPECT_EQ(refusal(rearranged(pattern, 640, 360, halfTurn), size),
                  "the picture is turned by half a turn");
    }
}

TEST(MeasureRefuses, patchesInDisorder) {
    // 15 x 9 cells of 16 x 16 pixels; those of the patches in another order.
    const FloatPicture shuffled =
        rearranged(patternPicture(5, 240, 144), 240, 144, [](int& x, int& y) {
            const int index = x / 16 + y / 16 * 15;
            const int other = index < 125 ? index * 57 % 125 : index;
            x = other % 15 * 16 + x % 16;
            y = other / 15 * 16 + y % 16;
        });
    EXPECT_EQ(refusal(shuffled, 5),
              "its patches are in disorder: neighbours have nothing in common");
}

// Lines that no patch is read at: the patches are all alike.
TEST(MeasureRefuses, linesBetweenPatchesOfOneColour) {
    FloatPicture picture = blankPicture(240, 144, 0.5f);
    for (int y = 0; y < 144; ++y) {
        for (int x = 0; x < 240; x += 16)
            picture.pixel(x, y)[1] = 1.0f;
    }
    EXPECT_EQ(refusal(picture, 5),
              "its patches are in disorder: neighbours have nothing in common");
}

TEST(MeasureRefuses, cellsAfterTheLastPatchThatAreNotBlack) {
    FloatPicture picture = patternPicture(3, 280, 160);
    for (int y = 120; y < 160; ++y) {
        for (int x = 240; x < 280; ++x)
            picture.pixel(x, y)[2] = 0.5f;
    }
    EXPECT_EQ(refusal(picture, 3),
              "the cell at 240,120, after the last patch, is black in the pattern like the first "
              "patch, and differs from it here: the patches are in another order, or the grade is "
              "not the same everywhere");
}

TEST(MeasureRefuses, aGradeThatChangesAcrossThePicture) {
    FloatPicture picture = patternPicture(9, 640, 360);
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x)
            picture.pixel(x, y)[0] += static_cast<float>(y) / 720.0f;
    }
    EXPECT_NE(refusal(picture, 9).find("the grade is not the same everywhere"), std::string::npos);
}

TEST(MeasureRefuses, somethingOverThePattern) {
    FloatPicture picture = patternPicture(9, 640, 360);
    for (int y = 100; y < 130; ++y) {
        for (int x = 205; x < 240; ++x) {
            for (int channel = 0; channel < 3; ++channel)
                picture.pixel(x, y)[channel] = 1.0f;
        }
    }
    const std::string said = refusal(picture, 9);
    EXPECT_NE(said.find(" of its 756 patches vary too much, the first at "), std::string::npos)
        << said;
    EXPECT_NE(said.find(": something lies over the pattern, or it is compressed too much"),
              std::string::npos)
        << said;
}

TEST(MeasureRefuses, anotherPicture) {
    for (const int size : {3, 5, 9, 17})
        EXPECT_NE(refusal(landscape(640, 360), size), "") << size;
    EXPECT_EQ(refusal(noisy(landscape(640, 360), 0.5f, 2), 9), notThere(9));
}

TEST(MeasureRefuses, valuesThatAreNoNumbers) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        FloatPicture picture = patternPicture(2, 320, 160);
        picture.pixel(120, 40)[2] = bad;
        EXPECT_EQ(refusal(picture, 2), "the patch at 80,0 holds values that are no numbers");
    }
}

}  // namespace
