// The kernel grades as the CPU does.
#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

#include "tests/gpu/parity.h"

namespace {

using twtest::Colour;
using twtest::compare;
using twtest::Differences;
using twtest::Parity;
using twtest::Picture;
using twtest::Place;

class ParityOfSize : public Parity, public testing::WithParamInterface<int> {};

TEST_P(ParityOfSize, inAllTetrahedraAndTies) {
    const tw::Lut3D lut = twtest::scatteredLut(GetParam(), 3);
    checkColours(lut, twtest::tetrahedra(lut));
}

TEST_P(ParityOfSize, onLatticePoints) {
    const tw::Lut3D lut = twtest::scatteredLut(GetParam(), 4);
    checkColours(lut, twtest::latticePoints(lut));
}

TEST_P(ParityOfSize, onNoiseInAndBeyondTheDomain) {
    const tw::Lut3D lut = twtest::scatteredLut(GetParam(), 5);
    checkColours(lut, twtest::noise(lut, 3000));
}

TEST_P(ParityOfSize, withADomainOtherThanZeroToOne) {
    tw::Lut3D lut = twtest::scatteredLut(GetParam(), 6);
    twtest::setDomain(lut, 0, -0.1f, 1.2f);
    twtest::setDomain(lut, 1, 0.0f, 2.0f);
    twtest::setDomain(lut, 2, 0.25f, 0.75f);
    checkColours(lut, twtest::tetrahedra(lut));
    checkColours(lut, twtest::noise(lut, 1000));
}

INSTANTIATE_TEST_SUITE_P(Sizes, ParityOfSize, testing::Values(2, 3, 17, 33, 65, 129),
                         testing::PrintToStringParamName());

TEST_F(Parity, onNotANumberInfinitiesDenormalsAndValuesFarOutside) {
    checkColours(twtest::scatteredLut(17, 8), twtest::specials());
}

TEST_F(Parity, withSamplesThatAreNotFinite) {
    tw::Lut3D lut = twtest::scatteredLut(3, 9);
    lut.data[0] = std::numeric_limits<float>::quiet_NaN();
    lut.data[4] = std::numeric_limits<float>::infinity();
    lut.data[44] = -std::numeric_limits<float>::infinity();
    lut.data[50] = 1e-40f;
    checkColours(lut, twtest::tetrahedra(lut));
}

// A corner without weight shows then: which one it is decides about a result that is no number.
TEST_F(Parity, inTiesBesideSamplesThatAreInfinite) {
    for (std::size_t corner = 0; corner < 8; ++corner) {
        tw::Lut3D lut = twtest::scatteredLut(2, 15);
        for (std::size_t channel = 0; channel < 3; ++channel)
            lut.data[corner * 3 + channel] = std::numeric_limits<float>::infinity();
        checkColours(lut, twtest::tetrahedra(lut));
    }
}

TEST_F(Parity, onFramesOfOddSizesAndPitches) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 10);
    const std::vector<Colour> colours = twtest::noise(lut, 500);
    for (const bool half : {false, true}) {
        for (const auto& [width, height] :
             {std::pair(1, 1), {15, 17}, {16, 16}, {17, 31}, {129, 3}}) {
            const Picture source = twtest::pictureOf(colours, {width, height, width + 5, half});
            check(lut, source, 1.0f, Place::kInPlace, source.shape);
            check(lut, source, 1.0f, Place::kOtherBuffer, {width, height, width, half});
        }
    }
}

TEST_F(Parity, alphaKeepsItsBits) {
    const tw::Lut3D lut = twtest::scatteredLut(3, 12);
    Picture source({2, 1, 2, false});
    source.set(0, 0, 3, std::bit_cast<float>(0x7FC12345U));
    source.set(1, 0, 3, -0.0f);
    const Picture picture = graded(lut, source, 0.7f, Place::kInPlace, source.shape);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(picture.at(0, 0, 3)), 0x7FC12345U);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(picture.at(1, 0, 3)), 0x80000000U);
}

// The two sides round the slider's percent differently: one divides a double and narrows it, the
// other narrows and divides. Integers and tenths are what the slider gives.
TEST_F(Parity, atEveryPercent_withEachSidesOwnAmount) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 13);
    const Picture source = twtest::pictureOf(twtest::noise(lut, 400), {20, 20, 20, false});
    for (int percent = 1; percent <= 100; ++percent) {
        const auto cpu = static_cast<float>(percent / 100.0);
        const float gpu = static_cast<float>(percent) / 100.0f;
        ASSERT_EQ(cpu, gpu) << percent;
        check(lut, source, gpu, Place::kInPlace, source.shape);
    }
}

TEST_F(Parity, atTenthsOfAPercent_withinTheAmountsOwnRounding) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 14);
    const Picture source = twtest::pictureOf(twtest::noise(lut, 400), {20, 20, 20, false});
    Differences worst;
    for (int tenths = 1; tenths <= 1000; ++tenths) {
        const auto cpu = static_cast<float>(tenths / 10.0 / 100.0);
        const float gpu = static_cast<float>(tenths / 10.0) / 100.0f;
        const Differences found = compare(twtest::cpuPicture(lut, source, cpu, source.shape),
                                          graded(lut, source, gpu, Place::kInPlace, source.shape));
        worst.largest = std::max(worst.largest, found.largest);
        EXPECT_EQ(found.notANumber, 0);
        // With the kernel's own amount on both sides nothing is left.
        if (tenths % 97 == 0) check(lut, source, gpu, Place::kInPlace, source.shape);
    }
    // Amounts 6e-8 apart, over distances of up to 2.5 between a colour and its LUT value.
    EXPECT_LE(worst.largest, 3e-7);
    EXPECT_GT(worst.largest, 0.0);
}

}  // namespace
