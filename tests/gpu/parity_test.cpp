// The kernel grades as the CPU does, to the bit: its text for this processor as tw::applyF, its
// other text as a reference with the other rounding.
#include <gtest/gtest.h>

#include <tuple>

#include "gpu/kernel_source.h"
#include "tests/gpu/parity_fixture.h"

namespace {

using twtest::compare;
using twtest::Differences;
using twtest::kOwnRounding;
using twtest::Parity;
using twtest::ParityFrame;
using twtest::ParityRow;
using twtest::parityTable;
using twtest::Picture;
using twtest::Place;
using twtest::Rounding;

Picture cpuPicture(const tw::Lut3D& lut, const ParityFrame& frame) {
    return twtest::cpuPicture(lut, frame.source, frame.amount, frame.shape);
}

class ParityOfRow : public Parity, public testing::WithParamInterface<ParityRow> {};

TEST_P(ParityOfRow, kernelEqualsTheCpu) {
    const tw::Lut3D lut = GetParam().lut();
    for (const ParityFrame& frame : GetParam().frames(lut)) {
        const Differences found = compare(cpuPicture(lut, frame), graded(lut, frame));
        EXPECT_EQ(found.unequal, 0) << describe(frame) << ": " << found.first;
    }
}

TEST_P(ParityOfRow, eitherTextEqualsTheReferenceOfItsRounding) {
    const tw::Lut3D lut = GetParam().lut();
    const std::vector<ParityFrame> frames = GetParam().frames(lut);
    for (const Rounding rounding : {Rounding::kApart, Rounding::kFused}) {
        useText(rounding);
        for (const ParityFrame& frame : frames) {
            const Picture expected = referencePicture(lut, frame, rounding);
            const Differences found = compare(expected, graded(lut, frame));
            EXPECT_EQ(found.unequal, 0)
                << nameOf(rounding) << ", " << describe(frame) << ": " << found.first;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Table, ParityOfRow, testing::ValuesIn(parityTable()),
                         [](const auto& row) { return row.param.name; });

TEST(KernelText, isThatOfThisProcessor) {
    EXPECT_EQ(twgpu::kKernelSource, twtest::kernelText(kOwnRounding));
}

// Or the two comparisons above would say little about which is which.
TEST_F(Parity, theTwoTextsRoundDifferently) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 5);
    const ParityFrame frame = twtest::framesOf(twtest::noise(lut, 1000)).front();
    useText(Rounding::kApart);
    const Picture apart = graded(lut, frame);
    useText(Rounding::kFused);
    const Differences found = compare(apart, graded(lut, frame));
    EXPECT_GT(found.unequal, 0);
    EXPECT_LE(found.largest, 4e-7);
}

TEST_F(Parity, alphaKeepsItsBits) {
    const tw::Lut3D lut = twtest::scatteredLut(3, 12);
    Picture source({3, 1, 3, false});
    const std::uint32_t bits[] = {0x7FC12345U, 0x80000000U, 0x00000001U};
    for (int x = 0; x < 3; ++x)
        source.set(x, 0, 3, std::bit_cast<float>(bits[x]));
    for (const bool flushes : {false, true}) {
        software_metal::setFlushesSubnormals(flushes);
        const Picture picture = graded(lut, {source, 0.7f, Place::kInPlace, source.shape});
        for (int x = 0; x < 3; ++x)
            EXPECT_EQ(std::bit_cast<std::uint32_t>(picture.at(x, 0, 3)), bits[x]) << flushes;
    }
}

// The two sides round the slider's percent differently: one divides a double and narrows it, the
// other narrows and divides. Whole percents come out alike:
// equalsTheCpuPicture_atEveryIntegerAmount.
TEST_F(Parity, atTenthsOfAPercent_withinTheAmountsOwnRounding) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 14);
    const Picture source = twtest::pictureOf(twtest::noise(lut, 400), {20, 20, 20, false});
    Differences worst;
    for (int tenths = 1; tenths <= 1000; ++tenths) {
        const auto cpu = static_cast<float>(tenths / 10.0 / 100.0);
        const float gpu = static_cast<float>(tenths / 10.0) / 100.0f;
        const Picture actual = graded(lut, {source, gpu, Place::kInPlace, source.shape});
        const Differences found =
            compare(twtest::cpuPicture(lut, source, cpu, source.shape), actual);
        worst.largest = std::max(worst.largest, found.largest);
        // With the kernel's own amount on both sides nothing is left.
        const Picture same = twtest::cpuPicture(lut, source, gpu, source.shape);
        if (tenths % 97 == 0) {
            EXPECT_EQ(compare(same, actual).unequal, 0);
        }
    }
    // Amounts 6e-8 apart, over distances of up to 2.5 between a colour and its LUT value.
    EXPECT_LE(worst.largest, 3e-7);
    EXPECT_GT(worst.largest, 0.0);
}

}  // namespace
