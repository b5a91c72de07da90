// The engine's arithmetic once more, one operation a line and not optimised: the reference for
// results that must agree to the last bit.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "native/src/lut_engine.h"

namespace twtest {

// a * b + c: one rounding where the processor fuses, two elsewhere.
inline float mulAddStep(float a, float b, float c) {
#if defined(__aarch64__)
    return std::fma(a, b, c);
#else
    const float product = a * b;
    return product + c;
#endif
}

struct AxisStep {
    std::ptrdiff_t cell;
    float fraction;
};

inline AxisStep axisStep(const tw::Lut3D& lut, int channel, float in) {
    float u = (in - lut.domainMin[channel]) / (lut.domainMax[channel] - lut.domainMin[channel]);
    if (u > 1.0f) u = 1.0f;
    if (u < 0.0f) u = 0.0f;
    if (std::isnan(u)) u = 0.0f;
    const float t = u * static_cast<float>(lut.size - 1);
    const std::int32_t cell = std::min(static_cast<std::int32_t>(t), lut.size - 2);
    return {cell, t - static_cast<float>(cell)};
}

// Corners as steps along red, green, blue; weights in the order c000, first, second, c111.
struct Tetrahedron {
    std::array<int, 3> first;
    std::array<int, 3> second;
    std::array<float, 4> weight;
};

inline Tetrahedron chooseStep(float fr, float fg, float fb) {
    constexpr std::array<int, 3> r = {1, 0, 0}, g = {0, 1, 0}, b = {0, 0, 1};
    constexpr std::array<int, 3> rg = {1, 1, 0}, rb = {1, 0, 1}, gb = {0, 1, 1};
    if (fr > fg) {
        if (fg > fb) return {r, rg, {1.0f - fr, fr - fg, fg - fb, fb}};
        if (fr > fb) return {r, rb, {1.0f - fr, fr - fb, fb - fg, fg}};
        return {b, rb, {1.0f - fb, fb - fr, fr - fg, fg}};
    }
    if (fb > fg) return {b, gb, {1.0f - fb, fb - fg, fg - fr, fr}};
    if (fb > fr) return {g, gb, {1.0f - fg, fg - fb, fb - fr, fr}};
    return {g, rg, {1.0f - fg, fg - fr, fr - fb, fb}};
}

inline std::array<float, 3> sampleSteps(const tw::Lut3D& lut, const float* in) {
    const AxisStep red = axisStep(lut, 0, in[0]);
    const AxisStep green = axisStep(lut, 1, in[1]);
    const AxisStep blue = axisStep(lut, 2, in[2]);
    const Tetrahedron t = chooseStep(red.fraction, green.fraction, blue.fraction);
    const auto node = [&](const std::array<int, 3>& step) {
        return &lut.data[static_cast<std::size_t>(tw::latticeIndex(
            lut.size, red.cell + step[0], green.cell + step[1], blue.cell + step[2]))];
    };
    const float* low = node({0, 0, 0});
    const float* first = node(t.first);
    const float* second = node(t.second);
    const float* high = node({1, 1, 1});
    std::array<float, 3> out{};
    for (std::size_t k = 0; k < 3; ++k) {
        float sum = t.weight[1] * first[k];
        sum = mulAddStep(t.weight[0], low[k], sum);
        sum = mulAddStep(t.weight[2], second[k], sum);
        out[k] = mulAddStep(t.weight[3], high[k], sum);
    }
    return out;
}

inline std::array<float, 3> gradeSteps(const tw::Lut3D& lut, const float* in, float amount) {
    std::array<float, 3> out = sampleSteps(lut, in);
    for (std::size_t k = 0; k < 3; ++k)
        out[k] = mulAddStep(out[k] - in[k], amount, in[k]);
    return out;
}

inline float fromByteStep(std::uint8_t byte) {
    return static_cast<float>(byte) * 0.003921569f;
}

inline std::uint8_t toByteStep(float value) {
    const float q = mulAddStep(value, 255.0f, 0.5f);
    if (q >= 255.0f) return 255;
    if (!(q > 0.0f)) return 0;
    return static_cast<std::uint8_t>(q);
}

}  // namespace twtest
