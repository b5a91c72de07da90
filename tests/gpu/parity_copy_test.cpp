// The kernel at amount 0, as it runs where there is no LUT to apply.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "tests/gpu/parity_fixture.h"

namespace {

using twtest::Colour;
using twtest::compare;
using twtest::Differences;
using twtest::Parity;
using twtest::Picture;
using twtest::Place;

// Amount 0 copies. Values that are not finite and -0 go through the blend like all others; what
// becomes of them is held here as it stands.
class CopyThrough : public Parity {
protected:
    float copied(float value) {
        Picture source({1, 1, 1, false});
        for (int c = 0; c < 4; ++c)
            source.set(0, 0, c, value);
        const Picture copy =
            graded(twtest::identityLut(2), {source, 0.0f, Place::kOtherBuffer, {1, 1, 2, false}});
        EXPECT_TRUE(twtest::sameValue(copy.at(0, 0, 3), value));
        return copy.at(0, 0, 0);
    }
};

TEST_F(CopyThrough, equalsTheSource_forFiniteValues) {
    const tw::Lut3D identity = twtest::identityLut(2);
    for (const bool half : {false, true}) {
        // As it is stored: past the half floats' range lies infinity, close to zero -0.
        const auto copies = [half](float value) {
            const float kept = twtest::stored(value, half);
            return std::isfinite(kept) && !(kept == 0.0f && std::signbit(kept));
        };
        std::vector<Colour> colours = twtest::noise(identity, 2000);
        for (const Colour& colour : twtest::specials()) {
            if (std::ranges::all_of(colour.channel, copies)) colours.push_back(colour);
        }
        const Picture source = twtest::pictureOf(colours, {50, 60, 51, half});
        const Picture copy =
            graded(identity, {source, 0.0f, Place::kOtherBuffer, {50, 60, 53, half}});
        const Differences found = compare(source, copy);
        EXPECT_EQ(found.unequal, 0) << found.first;
    }
}

TEST_F(CopyThrough, makesInfinitiesNotANumber) {
    EXPECT_TRUE(std::isnan(copied(std::numeric_limits<float>::infinity())));
    EXPECT_TRUE(std::isnan(copied(-std::numeric_limits<float>::infinity())));
}

TEST_F(CopyThrough, keepsNotANumber) {
    EXPECT_TRUE(std::isnan(copied(std::numeric_limits<float>::quiet_NaN())));
}

TEST_F(CopyThrough, makesMinusZeroZero) {
    const float copy = copied(-0.0f);
    EXPECT_EQ(copy, 0.0f);
    EXPECT_FALSE(std::signbit(copy));
}

}  // namespace
