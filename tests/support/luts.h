// LUTs that the tests are made of, and the comparison of two LUT records.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>

#include "native/src/lut_engine.h"
#include "tests/support/float_check.h"
#include "tests/support/random.h"

namespace twtest {

inline tw::Lut3D blankLut(std::int32_t size) {
    tw::Lut3D lut;
    lut.size = size;
    lut.data.assign(tw::latticeFloats(size), 0.0f);
    return lut;
}

inline tw::Lut3D constantLut(float value) {
    tw::Lut3D lut = blankLut(2);
    lut.data.assign(lut.data.size(), value);
    return lut;
}

inline tw::Lut3D identityLut(std::int32_t size) {
    tw::Lut3D lut = blankLut(size);
    const auto top = static_cast<float>(size - 1);
    for (std::int32_t b = 0; b < size; ++b) {
        for (std::int32_t g = 0; g < size; ++g) {
            for (std::int32_t r = 0; r < size; ++r) {
                float* node = &lut.data[static_cast<std::size_t>(tw::latticeIndex(size, r, g, b))];
                node[0] = static_cast<float>(r) / top;
                node[1] = static_cast<float>(g) / top;
                node[2] = static_cast<float>(b) / top;
            }
        }
    }
    return lut;
}

// Nodes from -0.5 to 1.5 at random, so that no two tetrahedra agree inside a cell.
inline tw::Lut3D scatteredLut(std::int32_t size, std::uint64_t seed) {
    tw::Lut3D lut = blankLut(size);
    Random random(seed);
    for (float& value : lut.data)
        value = random.between(-0.5f, 1.5f);
    return lut;
}

inline void setDomain(tw::Lut3D& lut, int channel, float low, float high) {
    lut.domainMin[channel] = low;
    lut.domainMax[channel] = high;
}

inline ::testing::AssertionResult sameLut(const tw::Lut3D& expected, const tw::Lut3D& actual) {
    if (expected.size != actual.size || expected.id != actual.id ||
        expected.probe != actual.probe || expected.name != actual.name) {
        return ::testing::AssertionFailure()
               << "expected size " << expected.size << ", id " << expected.id << ", probe "
               << expected.probe << ", name \"" << expected.name << "\"; got size " << actual.size
               << ", id " << actual.id << ", probe " << actual.probe << ", name \"" << actual.name
               << '"';
    }
    if (const auto low = sameNumbers(expected.domainMin, actual.domainMin); !low)
        return ::testing::AssertionFailure() << "domainMin: " << low.message();
    if (const auto high = sameNumbers(expected.domainMax, actual.domainMax); !high)
        return ::testing::AssertionFailure() << "domainMax: " << high.message();
    if (const auto data = sameNumbers(expected.data, actual.data); !data)
        return ::testing::AssertionFailure() << "data: " << data.message();
    return ::testing::AssertionSuccess();
}

}  // namespace twtest
