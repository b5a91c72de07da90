#include "looks/neutral_axis.h"

#include <gtest/gtest.h>

#include "tests/support/luts.h"

namespace {

using looks::Colour;
using looks::neutralAxis;

TEST(NeutralAxis, ofTheIdentityIsTheGreys) {
    const std::vector<Colour> greys = neutralAxis(twtest::identityLut(3), 5);
    ASSERT_EQ(greys.size(), 5u);
    EXPECT_EQ(greys[0], (Colour{0, 0, 0}));
    EXPECT_EQ(greys[1], (Colour{0.25f, 0.25f, 0.25f}));
    EXPECT_EQ(greys[4], (Colour{1, 1, 1}));
}

TEST(NeutralAxis, runsOverTheWholeDomain) {
    tw::Lut3D lut = twtest::identityLut(2);
    twtest::setDomain(lut, 1, -1.0f, 3.0f);
    EXPECT_EQ(neutralAxis(lut, 3)[1], (Colour{0.5f, 0.5f, 0.5f}));
    EXPECT_EQ(neutralAxis(lut, 3)[2], (Colour{1, 1, 1}));
}

TEST(NeutralAxis, isNotLimited) {
    EXPECT_EQ(neutralAxis(twtest::constantLut(1.5f), 2)[0], (Colour{1.5f, 1.5f, 1.5f}));
}

}  // namespace
