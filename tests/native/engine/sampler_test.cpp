// sampleTetra against an oracle in double precision and, bit for bit, against its own steps.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/float_steps.h"
#include "tests/support/luts.h"
#include "tests/support/oracle.h"

namespace {

using Colour = std::array<float, 3>;

constexpr float kInf = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

Colour sampled(const tw::Lut3D& lut, const Colour& in) {
    Colour out = {-77, -77, -77};
    tw::sampleTetra(lut, in.data(), out.data());
    return out;
}

std::string shownColour(const Colour& c) {
    return twtest::shown(c[0]) + ", " + twtest::shown(c[1]) + ", " + twtest::shown(c[2]);
}

// Inputs all over the domain and a little beyond it.
Colour scatteredInput(const tw::Lut3D& lut, twtest::Random& random) {
    Colour in{};
    for (std::size_t c = 0; c < 3; ++c) {
        const float low = lut.domainMin[c];
        const float high = lut.domainMax[c];
        in[c] = random.between(low - 0.1f * (high - low), high + 0.1f * (high - low));
    }
    return in;
}

class SamplerSizes : public ::testing::TestWithParam<std::int32_t> {
protected:
    // 5000 scattered inputs against the oracle.
    void expectOracle(unsigned seed) const {
        twtest::Random random(seed);
        const double tolerance = twtest::oracleTolerance(lut_);
        for (int i = 0; i < 5000; ++i) {
            const Colour in = scatteredInput(lut_, random);
            const Colour out = sampled(lut_, in);
            const twtest::Rgb expected = twtest::oracleSample(lut_, in.data());
            for (std::size_t k = 0; k < 3; ++k) {
                ASSERT_TRUE(twtest::within(tolerance, expected[k], static_cast<double>(out[k])))
                    << "size " << GetParam() << ", channel " << k << ", in " << shownColour(in);
            }
        }
    }

    tw::Lut3D lut_ = twtest::scatteredLut(GetParam(), 100);
};

TEST_P(SamplerSizes, agreesWithOracle_onScatteredNodes) {
    expectOracle(7);
}

TEST_P(SamplerSizes, agreesWithOracle_inOddDomain) {
    twtest::setDomain(lut_, 0, -1.7f, 3.1f);
    twtest::setDomain(lut_, 1, 0.013f, 0.71f);
    twtest::setDomain(lut_, 2, 100.0f, 107.3f);
    expectOracle(8);
}

TEST_P(SamplerSizes, equalsSteps_bitForBit) {
    twtest::setDomain(lut_, 0, -1.7f, 3.1f);
    twtest::setDomain(lut_, 1, 0.013f, 0.71f);
    twtest::Random random(9);
    for (int i = 0; i < 20000; ++i) {
        const Colour in = scatteredInput(lut_, random);
        ASSERT_TRUE(twtest::sameNumbers(twtest::sampleSteps(lut_, in.data()), sampled(lut_, in)))
            << "size " << GetParam() << ", in " << shownColour(in);
    }
}

// Fractions of few bits make two or three channels equal in most draws.
TEST_P(SamplerSizes, equalsSteps_whereFractionsTie) {
    const auto cells = static_cast<float>(GetParam() - 1);
    twtest::Random random(10);
    for (int i = 0; i < 20000; ++i) {
        Colour in{};
        for (float& c : in)
            c = static_cast<float>(random.below(static_cast<int>(cells) * 4 + 1)) / (cells * 4.0f);
        ASSERT_TRUE(twtest::sameNumbers(twtest::sampleSteps(lut_, in.data()), sampled(lut_, in)))
            << "size " << GetParam() << ", in " << shownColour(in);
    }
}

TEST_P(SamplerSizes, returnsInput_throughIdentity) {
    const tw::Lut3D identity = twtest::identityLut(GetParam());
    const Colour orders[] = {{0.8f, 0.5f, 0.2f}, {0.8f, 0.2f, 0.5f}, {0.5f, 0.2f, 0.8f},
                             {0.5f, 0.8f, 0.2f}, {0.2f, 0.8f, 0.5f}, {0.2f, 0.5f, 0.8f}};
    // A position inside cell 0 and one inside the last cell, in each of the six tetrahedra.
    const float cells = static_cast<float>(GetParam() - 1);
    for (const Colour& fractions : orders) {
        for (const float cell : {0.0f, cells - 1.0f}) {
            const Colour in = {(cell + fractions[0]) / cells, (cell + fractions[1]) / cells,
                               (cell + fractions[2]) / cells};
            const Colour out = sampled(identity, in);
            for (std::size_t k = 0; k < 3; ++k) {
                EXPECT_TRUE(
                    twtest::within(3e-7, static_cast<double>(in[k]), static_cast<double>(out[k])))
                    << "size " << GetParam() << ", in " << shownColour(in);
            }
        }
    }
}

TEST_P(SamplerSizes, returnsLastNode_atDomainMaximum) {
    const float* last = &lut_.data[lut_.data.size() - 3];
    EXPECT_TRUE(twtest::sameBits(Colour{last[0], last[1], last[2]}, sampled(lut_, {1, 1, 1})));
}

INSTANTIATE_TEST_SUITE_P(, SamplerSizes, ::testing::Values(2, 3, 17, 33, 65, 256),
                         [](const auto& size) { return "Size" + std::to_string(size.param); });

// With a power of two of cells every lattice position is met exactly.
TEST(SampleTetra, returnsNode_atEveryLatticePoint) {
    for (const std::int32_t size : {2, 3, 17}) {
        const tw::Lut3D lut = twtest::scatteredLut(size, 3);
        const auto top = static_cast<float>(size - 1);
        for (std::int32_t i = 0; i < size * size * size; ++i) {
            const Colour in = {static_cast<float>(i % size) / top,
                               static_cast<float>(i / size % size) / top,
                               static_cast<float>(i / size / size) / top};
            const float* node = &lut.data[static_cast<std::size_t>(i) * 3];
            ASSERT_TRUE(twtest::sameNumbers(Colour{node[0], node[1], node[2]}, sampled(lut, in)))
                << "size " << size << ", node " << i;
        }
    }
}

TEST(SampleTetra, returnsNearestFace_outsideDomain) {
    const tw::Lut3D lut = twtest::scatteredLut(17, 4);
    struct Row {
        float outside;
        float nearest;
    };
    const Row rows[] = {{-0.001f, 0}, {-1e30f, 0}, {-kInf, 0}, {kNan, 0}, {-kNan, 0},
                        {-0.0f, 0},   {1.001f, 1}, {1e30f, 1}, {kInf, 1}};
    for (const Row& row : rows) {
        for (std::size_t c = 0; c < 3; ++c) {
            Colour in = {0.3f, 0.62f, 0.91f};
            Colour inside = in;
            in[c] = row.outside;
            inside[c] = row.nearest;
            EXPECT_TRUE(
                twtest::sameNumbers(twtest::sampleSteps(lut, inside.data()), sampled(lut, in)))
                << "channel " << c << ", in " << shownColour(in);
        }
        const Colour all = {row.outside, row.outside, row.outside};
        EXPECT_TRUE(twtest::sameNumbers(sampled(lut, {row.nearest, row.nearest, row.nearest}),
                                        sampled(lut, all)))
            << shownColour(all);
    }
}

TEST(SampleTetra, halvesRed_inDomainOfTwo) {
    tw::Lut3D lut = twtest::scatteredLut(17, 5);
    twtest::Random random(11);
    for (int i = 0; i < 1000; ++i) {
        const Colour in = {random.between(0, 1), random.between(0, 1), random.between(0, 1)};
        twtest::setDomain(lut, 0, 0, 1);
        const Colour expected = sampled(lut, in);
        twtest::setDomain(lut, 0, 0, 2);
        ASSERT_TRUE(twtest::sameNumbers(expected, sampled(lut, {in[0] * 2, in[1], in[2]})))
            << shownColour(in);
    }
}

TEST(SampleTetra, meetsDomainEnds_atFirstAndLastNode) {
    tw::Lut3D lut = twtest::scatteredLut(5, 6);
    twtest::setDomain(lut, 0, -1.7f, 3.1f);
    twtest::setDomain(lut, 1, 0.013f, 0.71f);
    twtest::setDomain(lut, 2, 100.0f, 107.3f);
    EXPECT_TRUE(twtest::sameNumbers(std::vector<float>(lut.data.begin(), lut.data.begin() + 3),
                                    sampled(lut, {-1.7f, 0.013f, 100.0f})));
    EXPECT_TRUE(twtest::sameNumbers(std::vector<float>(lut.data.end() - 3, lut.data.end()),
                                    sampled(lut, {3.1f, 0.71f, 107.3f})));
}

TEST(SampleTetra, followsSteps_inInfiniteDomain) {
    tw::Lut3D lut = twtest::scatteredLut(5, 6);
    twtest::setDomain(lut, 0, 0, kInf);
    twtest::setDomain(lut, 1, -kInf, 0);
    twtest::setDomain(lut, 2, -3e38f, 3e38f);
    const float values[] = {0.5f, -0.5f, 3e38f, kInf, -kInf, kNan};
    for (const float r : values) {
        for (const float g : values) {
            for (const float b : values) {
                const Colour in = {r, g, b};
                EXPECT_TRUE(
                    twtest::sameNumbers(twtest::sampleSteps(lut, in.data()), sampled(lut, in)))
                    << shownColour(in);
            }
        }
    }
}

TEST(SampleTetra, doesNotClamp_valuesOfTheLut) {
    EXPECT_TRUE(twtest::sameBits(Colour{-7.5f, -7.5f, -7.5f},
                                 sampled(twtest::constantLut(-7.5f), {0.5f, 0.5f, 0.5f})));
    EXPECT_TRUE(twtest::sameBits(Colour{1000, 1000, 1000},
                                 sampled(twtest::constantLut(1000), {0.5f, 0.5f, 0.5f})));
}

TEST(SampleTetra, readsInputFirst_whenOutputIsTheSameArray) {
    const tw::Lut3D lut = twtest::scatteredLut(33, 12);
    const Colour in = {0.31f, 0.87f, 0.55f};
    Colour both = in;
    tw::sampleTetra(lut, both.data(), both.data());
    EXPECT_TRUE(twtest::sameNumbers(sampled(lut, in), both));
}

}  // namespace
