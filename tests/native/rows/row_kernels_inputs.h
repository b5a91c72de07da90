// Inputs that show differences between row kernels: LUTs far from linear with every special value
// in them, and colours on lattice points, beside them, equal among the channels, or NaN.
#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include "native/src/lut_engine.h"

namespace tw::test {

inline float specialValue(std::uint32_t choice) {
    using Limits = std::numeric_limits<float>;
    static constexpr float kValues[] = {0.0f,
                                        -0.0f,
                                        1.0f,
                                        -1.0f,
                                        0.5f,
                                        2.0f,
                                        1e-3f,
                                        1e30f,
                                        -1e30f,
                                        Limits::denorm_min(),
                                        -Limits::denorm_min(),
                                        Limits::min(),
                                        Limits::max(),
                                        Limits::lowest(),
                                        Limits::infinity(),
                                        -Limits::infinity(),
                                        Limits::quiet_NaN()};
    return kValues[choice % std::size(kValues)];
}

// One value in `every` is a special one; 0: none. A generator of its own, as the largest LUT has
// fifty million values.
inline Lut3D oddLut(std::int32_t size, std::uint32_t every, std::uint32_t seed) {
    Lut3D lut;
    lut.size = size;
    lut.data.resize(latticeFloats(size));
    std::uint32_t state = seed;
    for (float& value : lut.data) {
        state ^= state << 13;
        state ^= state >> 17;
        state ^= state << 5;
        const bool special = every != 0 && state / 32 % every == 0;
        value = special ? specialValue(state) : static_cast<float>(state % 1400) * 1e-3f - 0.2f;
    }
    return lut;
}

inline Lut3D withDomain(Lut3D lut) {
    const float low[3] = {-0.25f, 0.0f, 0.1f};
    const float high[3] = {1.5f, 0.7f, 3.0f};
    for (int k = 0; k < 3; ++k) {
        lut.domainMin[k] = low[k];
        lut.domainMax[k] = high[k];
    }
    return lut;
}

// Fills `channels` with such colours for a LUT of `size` points and the default domain.
inline void fillOdd(std::vector<float>& channels, std::int32_t size, std::mt19937& random) {
    std::uniform_real_distribution<float> uniform(-0.1f, 1.1f);
    const auto steps = static_cast<float>(size - 1);
    float before = 0.0f;
    for (float& value : channels) {
        const auto choice = static_cast<std::uint32_t>(random());
        const float point =
            static_cast<float>(choice / 16 % static_cast<std::uint32_t>(size)) / steps;
        switch (choice % 16) {
            case 0:
                value = specialValue(choice / 16);
                break;
            case 1:
            case 2:
                value = before;
                break;
            case 3:
                value = point;
                break;
            case 4:
                value = std::nextafter(point, 2.0f);
                break;
            case 5:
                value = std::nextafter(point, -1.0f);
                break;
            default:
                value = uniform(random);
        }
        before = value;
    }
}

// The same bits, or both NaN.
inline bool sameResult(float a, float b) {
    return std::isnan(a) ? std::isnan(b) : a == b && std::signbit(a) == std::signbit(b);
}

}  // namespace tw::test
