// How the kernel multiplies and adds: each of its two texts, and a reference of either kind.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <string>

#include "native/src/lut_engine.h"

namespace twtest {

enum class Rounding { kApart, kFused };

// The one of this processor's row kernels, and of the kernel text that a program built for it has.
#if defined(__aarch64__)
inline constexpr Rounding kOwnRounding = Rounding::kFused;
#else
inline constexpr Rounding kOwnRounding = Rounding::kApart;
#endif

inline const char* nameOf(Rounding rounding) {
    return rounding == Rounding::kFused ? "fused" : "apart";
}

// The kernel's text as the build wrote it for processors of that kind.
inline std::string kernelText(Rounding rounding) {
    const std::string name =
        std::string(TINTWELL_KERNEL_TEXTS "/tintwell_lut_") + nameOf(rounding) + ".metal";
    std::ifstream in(name, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline float mulAdd(Rounding rounding, float a, float b, float c) {
    if (rounding == Rounding::kFused) return std::fma(a, b, c);
    const float product = a * b;
    return product + c;
}

// The order in which a cell is crossed, from its low to its high corner: the axis of each step. The
// comparisons decide about equal fractions, and with them about samples that are not finite.
inline std::array<std::size_t, 3> crossing(const std::array<float, 3>& fraction) {
    const auto [red, green, blue] = fraction;
    if (red > green) {
        if (green > blue) return {0, 1, 2};
        if (red > blue) return {0, 2, 1};
        return {2, 0, 1};
    }
    if (blue > green) return {2, 1, 0};
    if (blue > red) return {1, 2, 0};
    return {1, 0, 2};
}

// A graded colour in single precision, red, green, blue, by a road of its own: along the axes in
// their order, where kernel and engine have six cases.
inline std::array<float, 3> gradedColour(const tw::Lut3D& lut, const std::array<float, 3>& in,
                                         float amount, Rounding rounding) {
    const auto points = static_cast<std::size_t>(lut.size);
    const std::array<std::size_t, 3> stride = {3, 3 * points, 3 * points * points};
    std::array<float, 3> fraction{};
    std::size_t corner = 0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const float low = lut.domainMin[axis];
        const float share = (in[axis] - low) / (lut.domainMax[axis] - low);
        const float inside = std::isnan(share) ? 0.0f : std::clamp(share, 0.0f, 1.0f);
        const float place = inside * static_cast<float>(points - 1);
        const std::size_t cell = std::min(static_cast<std::size_t>(place), points - 2);
        fraction[axis] = place - static_cast<float>(cell);
        corner += cell * stride[axis];
    }
    const auto [first, second, third] = crossing(fraction);
    const float weight[] = {1.0f - fraction[first], fraction[first] - fraction[second],
                            fraction[second] - fraction[third], fraction[third]};
    const float* sample[] = {&lut.data[corner], &lut.data[corner + stride[first]],
                             &lut.data[corner + stride[first] + stride[second]],
                             &lut.data[corner + stride[0] + stride[1] + stride[2]]};
    std::array<float, 3> out{};
    for (std::size_t k = 0; k < 3; ++k) {
        float sum = weight[1] * sample[1][k];
        for (const std::size_t i : {0U, 2U, 3U})
            sum = mulAdd(rounding, weight[i], sample[i][k], sum);
        out[k] = mulAdd(rounding, sum - in[k], amount, in[k]);
    }
    return out;
}

}  // namespace twtest
