// Tetrahedral interpolation in double precision, by another algorithm than the engine's: the
// fractions are sorted and the cell is crossed from its low to its high corner along the axis with
// the largest fraction first. Equal fractions need no rule here, since the corner between two equal
// ones has weight 0; so it holds only for LUTs of finite values.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "native/src/lut_engine.h"

namespace twtest {

using Rgb = std::array<double, 3>;

// Position of an input on one axis of the lattice, 0 .. size - 1.
inline double latticePosition(const tw::Lut3D& lut, int channel, float in) {
    const double low = static_cast<double>(lut.domainMin[channel]);
    const double high = static_cast<double>(lut.domainMax[channel]);
    const double share = (static_cast<double>(in) - low) / (high - low);
    const double inside = std::isnan(share) ? 0.0 : std::clamp(share, 0.0, 1.0);
    return inside * (lut.size - 1);
}

inline Rgb oracleSample(const tw::Lut3D& lut, const float* in) {
    const std::array<std::size_t, 3> stride = {
        3, 3 * static_cast<std::size_t>(lut.size),
        3 * static_cast<std::size_t>(lut.size) * static_cast<std::size_t>(lut.size)};
    std::array<double, 3> fraction{};
    std::size_t corner = 0;
    for (int axis = 0; axis < 3; ++axis) {
        const auto a = static_cast<std::size_t>(axis);
        const double position = latticePosition(lut, axis, in[axis]);
        const double cell = std::min(std::floor(position), static_cast<double>(lut.size - 2));
        fraction[a] = position - cell;
        corner += static_cast<std::size_t>(cell) * stride[a];
    }
    std::array<std::size_t, 3> axes = {0, 1, 2};
    std::sort(axes.begin(), axes.end(),
              [&](std::size_t a, std::size_t b) { return fraction[a] > fraction[b]; });
    Rgb out{};
    double before = 1.0;
    for (std::size_t step = 0; step <= 3; ++step) {
        const double after = step < 3 ? fraction[axes[step]] : 0.0;
        for (std::size_t k = 0; k < 3; ++k)
            out[k] += (before - after) * static_cast<double>(lut.data[corner + k]);
        before = after;
        if (step < 3) corner += stride[axes[step]];
    }
    return out;
}

// How far single precision may be off for nodes within -0.5 .. 1.5: each axis carries four
// roundings of its lattice position, a position counts with the difference of two nodes (at most 2)
// on three axes, and the weighted sum adds a few of its own.
inline double oracleTolerance(const tw::Lut3D& lut) {
    return (24.0 * (lut.size - 1) + 32.0) / 16777216.0;
}

}  // namespace twtest
