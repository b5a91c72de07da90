#include "looks/facts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/looks/cubes.h"

namespace {

using looks::Colour;
using looks::Facts;
using looks_test::curveOf;
using looks_test::lutOf;

TEST(Facts, ofTheIdentityAreNothing) {
    const Facts facts = looks::factsOf(twtest::identityLut(5));
    EXPECT_EQ(facts.points, 125u);
    EXPECT_EQ(facts.notNumbers + facts.below + facts.above + facts.duplicates, 0u);
    EXPECT_EQ(facts.lowest, 0.0f);
    EXPECT_EQ(facts.highest, 1.0f);
    EXPECT_EQ(facts.largestChange, 0.0f);
    EXPECT_EQ(facts.black, (Colour{0, 0, 0}));
    EXPECT_EQ(facts.white, (Colour{1, 1, 1}));
    EXPECT_EQ(facts.cast, 0.0f);
    for (const looks::ChannelFacts& channel : facts.channels) {
        EXPECT_EQ(channel.fall, 0.0f);
        EXPECT_EQ(channel.flatUpTo, 0.0f);
        EXPECT_EQ(channel.flatFrom, 1.0f);
    }
}

TEST(Facts, countPointsOutside_onceEach) {
    tw::Lut3D lut = twtest::identityLut(2);
    lut.data[0] = -0.5f;
    lut.data[1] = -0.25f;
    lut.data[23] = 1.5f;
    const Facts facts = looks::factsOf(lut);
    EXPECT_EQ(facts.below, 1u);
    EXPECT_EQ(facts.above, 1u);
    EXPECT_EQ(facts.lowest, -0.5f);
    EXPECT_EQ(facts.highest, 1.5f);
    EXPECT_EQ(facts.largestChange, 0.5f);
}

TEST(Facts, leaveOutWhatIsNoNumber) {
    tw::Lut3D lut = twtest::identityLut(2);
    lut.data[0] = std::nanf("");
    lut.data[1] = std::numeric_limits<float>::infinity();
    const Facts facts = looks::factsOf(lut);
    EXPECT_EQ(facts.notNumbers, 2u);
    EXPECT_EQ(facts.lowest, 0.0f);
    EXPECT_EQ(facts.highest, 1.0f);
}

TEST(Facts, countAllPointsOfOneColour) {
    tw::Lut3D lut = twtest::identityLut(2);
    for (const std::size_t point : {1u, 2u, 5u})
        std::fill_n(lut.data.begin() + static_cast<std::ptrdiff_t>(point * 3), 3, 0.5f);
    EXPECT_EQ(looks::factsOf(lut).duplicates, 3u);
}

TEST(Facts, findTheFall_andItsLowestGrey) {
    // Up to 0.8, down to 0.4 and up again, on the lattice points of red.
    const tw::Lut3D lut = lutOf(5, [](Colour in) {
        const float red[5] = {0.0f, 0.8f, 0.4f, 0.9f, 1.0f};
        return Colour{red[static_cast<int>(in[0] * 4.0f)], in[1], in[2]};
    });
    const Facts facts = looks::factsOf(lut);
    // The grey of 8 bits next to the lattice point is a little off it.
    EXPECT_NEAR(facts.channels[0].fall, 0.4f, 0.01f);
    EXPECT_NEAR(facts.channels[0].fallAt, 0.5f, 0.003f);
    EXPECT_EQ(facts.channels[1].fall, 0.0f);
}

TEST(Facts, findBothFlatEnds) {
    const tw::Lut3D lut =
        curveOf(5, [](float in) { return std::clamp((in - 0.25f) * 2.0f, 0.0f, 1.0f); });
    const Facts facts = looks::factsOf(lut);
    for (const looks::ChannelFacts& channel : facts.channels) {
        EXPECT_NEAR(channel.flatUpTo, 0.25f, 0.003f);
        EXPECT_NEAR(channel.flatFrom, 0.75f, 0.003f);
    }
}

TEST(Facts, ofAConstantAreFlatFromEndToEnd) {
    const Facts facts = looks::factsOf(twtest::constantLut(0.5f));
    EXPECT_EQ(facts.channels[0].flatUpTo, 1.0f);
    EXPECT_EQ(facts.channels[0].flatFrom, 0.0f);
    EXPECT_EQ(facts.duplicates, 8u);
}

TEST(Facts, findTheCast_andItsGrey) {
    const tw::Lut3D lut = lutOf(3, [](Colour in) {
        return Colour{in[0], in[1], in[2] == 0.5f ? 0.7f : in[2]};
    });
    const Facts facts = looks::factsOf(lut);
    EXPECT_NEAR(facts.cast, 0.2f, 0.002f);
    EXPECT_NEAR(facts.castAt, 0.5f, 0.003f);
}

TEST(Precision, isInStepsOf8Bits) {
    tw::Lut3D before = twtest::identityLut(2);
    tw::Lut3D after = before;
    after.data[3] -= 0.5f;
    after.data[4] += 0.25f;
    const looks::Precision precision = looks::precisionOf(before, after);
    EXPECT_FLOAT_EQ(precision.largest, 127.5f);
    EXPECT_FLOAT_EQ(precision.mean, 255.0f * 0.75f / 24.0f);
}

TEST(Precision, leavesOutWhatIsNotFinite) {
    tw::Lut3D before = twtest::identityLut(2);
    tw::Lut3D after = before;
    after.data[0] = std::nanf("");
    EXPECT_EQ(looks::precisionOf(before, after).largest, 0.0f);
    EXPECT_EQ(looks::precisionOf(before, after).mean, 0.0f);
}

}  // namespace
