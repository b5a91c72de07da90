// What Apple's GPUs may differ by from the CPU's picture: they count single-precision subnormals as
// zeros, which the software device does here too. Everything else in this folder runs without that.
//
// | where                                                          | rounding | differs by       |
// |----------------------------------------------------------------|----------|------------------|
// | a subnormal colour, sample, weight, product or sum             | either   | less than bound()|
// | a product exactly midway between two floats, to which a        | fused    | one unit in the  |
// | subnormal is added: without that the tie goes to even          |          | last place of    |
// |                                                                |          | that sum         |
// | a subnormal weight and an infinite sample: zero times infinity | either   | NaN, not infinity|
// | a subnormal difference of two fractions, beside an infinite    | either   | NaN, not infinity|
// | sample: the corner has no weight left                          |          |                  |
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <tuple>

#include "tests/gpu/parity_fixture.h"

namespace {

using twtest::describe;
using twtest::kOwnRounding;
using twtest::nameOf;
using twtest::Parity;
using twtest::ParityFrame;
using twtest::ParityRow;
using twtest::Picture;
using twtest::Place;
using twtest::Rounding;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

// The largest sample's share: a weight may be off by 2^-126 times the cells of an axis, 128 at
// most, and an amount blends it. The rest: colours and results. Where a fused sum meets a subnormal
// sample, a unit in the last place is added, of a sum that is no larger than the largest sample, at
// an amount below 2.
double bound(const tw::Lut3D& lut, Rounding rounding) {
    double largest = 0.0;
    bool meetsSubnormal = false;
    for (const float sample : lut.data) {
        meetsSubnormal = meetsSubnormal || std::fpclassify(sample) == FP_SUBNORMAL;
        if (std::isfinite(sample))
            largest = std::max(largest, std::abs(static_cast<double>(sample)));
    }
    const bool mayTie = meetsSubnormal && rounding == Rounding::kFused;
    return std::ldexp(largest, -116) + std::ldexp(1.0, -123) +
           (mayTie ? std::ldexp(largest, -22) : 0.0);
}

class Subnormals : public Parity, public testing::WithParamInterface<Rounding> {
protected:
    Subnormals() { useText(GetParam()); }

    Picture flushed(const tw::Lut3D& lut, const ParityFrame& frame) {
        software_metal::setFlushesSubnormals(true);
        return graded(lut, frame);
    }
};

TEST_P(Subnormals, changeNoPictureByMoreThanTheBound) {
    long unequal = 0;
    for (const ParityRow& row : twtest::parityTable()) {
        if (row.points > 33) continue;  // more points, the same arithmetic
        SCOPED_TRACE(row.name);
        const tw::Lut3D lut = row.lut();
        for (const ParityFrame& frame : row.frames(lut)) {
            const Picture exact = referencePicture(lut, frame, GetParam());
            const twtest::Differences found = compare(exact, flushed(lut, frame));
            EXPECT_LE(found.largest, bound(lut, GetParam()))
                << describe(frame) << ": " << found.first;
            unequal += found.unequal;
        }
    }
    EXPECT_GT(unequal, 0) << "no subnormal was met";
}

INSTANTIATE_TEST_SUITE_P(Either, Subnormals, testing::Values(Rounding::kApart, Rounding::kFused),
                         [](const auto& form) { return nameOf(form.param); });

// One pixel of a LUT of two points, all of whose samples are 0 but those named.
struct Sample {
    int red, green, blue;  // the corner
    float value;           // of all three channels
};
struct Exception {
    const char* name;
    std::array<float, 3> colour;
    std::array<Sample, 2> samples;
    std::optional<Rounding> rounding;  // of the text that shows it; none: either does
    float kept;                        // the blue channel with subnormals
    float flushed;                     // and without
};

// (1 - 2^-12) x (1 - 2^-13), the first row's product, lies midway between two floats.
const Exception kExceptions[] = {
    {"subnormal_addend_beside_a_product_midway",
     {0x1p-12f, 0.0f, 0.0f},
     {{{0, 0, 0, 0x1.FFFp-1f}, {1, 0, 0, 0x1p-126f}}},
     Rounding::kFused,
     0x1.FFD002p-1f,
     0x1.FFDp-1f},
    {"subnormal_weight_of_an_infinite_corner",
     {1.0f, 1.0f, 0x1p-130f},
     {{{1, 1, 1, kInfinity}, {0, 0, 0, 0.0f}}},
     std::nullopt,
     kInfinity,
     std::numeric_limits<float>::quiet_NaN()},
    {"subnormal_difference_of_fractions_beside_an_infinite_corner",
     {0x1.8p-126f, 0x1p-126f, 0.0f},
     {{{1, 0, 0, kInfinity}, {0, 0, 0, 0.0f}}},
     std::nullopt,
     kInfinity,
     std::numeric_limits<float>::quiet_NaN()},
};

class SubnormalException : public Parity,
                           public testing::WithParamInterface<std::tuple<Exception, Rounding>> {
protected:
    SubnormalException() { useText(std::get<Rounding>(GetParam())); }

    static tw::Lut3D lut() {
        tw::Lut3D made = twtest::blankLut(2);
        for (const Sample& sample : std::get<Exception>(GetParam()).samples) {
            const auto at = static_cast<std::size_t>(
                tw::latticeIndex(2, sample.red, sample.green, sample.blue));
            for (std::size_t channel = 0; channel < 3; ++channel)
                made.data[at + channel] += sample.value;
        }
        return made;
    }

    float blue(bool flushes) {
        const std::array<float, 3>& colour = std::get<Exception>(GetParam()).colour;
        Picture source({1, 1, 1, false});
        for (int c = 0; c < 3; ++c)
            source.set(0, 0, 2 - c, colour[static_cast<std::size_t>(c)]);
        source.set(0, 0, 3, 1.0f);
        software_metal::setFlushesSubnormals(flushes);
        return graded(lut(), {source, 1.0f, Place::kInPlace, source.shape}).at(0, 0, 0);
    }
};

TEST_P(SubnormalException, isWhatTheTableSays) {
    const auto& [exception, rounding] = GetParam();
    const bool shows = exception.rounding.value_or(rounding) == rounding;
    EXPECT_TRUE(twtest::sameValue(blue(true), exception.flushed)) << blue(true);
    const float kept = shows ? exception.kept : exception.flushed;
    EXPECT_TRUE(twtest::sameValue(blue(false), kept)) << blue(false);
}

INSTANTIATE_TEST_SUITE_P(Table, SubnormalException,
                         testing::Combine(testing::ValuesIn(kExceptions),
                                          testing::Values(Rounding::kApart, Rounding::kFused)),
                         [](const auto& test) {
                             return std::string(std::get<Exception>(test.param).name) + "_" +
                                    nameOf(std::get<Rounding>(test.param));
                         });

}  // namespace
