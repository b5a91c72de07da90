#include <algorithm>

#include "native/src/engine/mul_add.h"
#include "native/src/lut_engine.h"

namespace tw {
namespace {

// Where an input value falls on one axis of the lattice: between points `cell` and `cell` + 1.
struct AxisPosition {
    std::ptrdiff_t cell;  // 0 .. size - 2
    float fraction;       // 0 .. 1, 1 only at the top of the domain
};

AxisPosition locate(float value, float domainMin, float domainMax, std::int32_t size) {
    float u = (value - domainMin) / (domainMax - domainMin);
    if (u > 1.0f) u = 1.0f;
    // NaN counts as the bottom of the domain.
    if (!(u >= 0.0f)) u = 0.0f;
    const float t = u * static_cast<float>(size - 1);
    const std::int32_t cell = std::min(static_cast<std::int32_t>(t), size - 2);
    return {cell, t - static_cast<float>(cell)};
}

// The tetrahedron of a cell that holds a colour. Its corners are the cell's lowest point, two more
// (as offsets from it) and the cell's highest point, with one weight each in that order.
struct Tetrahedron {
    std::ptrdiff_t first;
    std::ptrdiff_t second;
    float weight[4];
};

// red, green, blue: the offsets of one step along each axis. The comparisons are strict exactly as
// they stand: colours with equal fractions must fall into the same tetrahedron here and on the GPU.
Tetrahedron choose(float fr, float fg, float fb, std::ptrdiff_t red, std::ptrdiff_t green,
                   std::ptrdiff_t blue) {
    if (fr > fg) {
        if (fg > fb) return {red, red + green, {1.0f - fr, fr - fg, fg - fb, fb}};
        if (fr > fb) return {red, red + blue, {1.0f - fr, fr - fb, fb - fg, fg}};
        return {blue, red + blue, {1.0f - fb, fb - fr, fr - fg, fg}};
    }
    if (fb > fg) return {blue, green + blue, {1.0f - fb, fb - fg, fg - fr, fr}};
    if (fb > fr) return {green, green + blue, {1.0f - fg, fg - fb, fb - fr, fr}};
    return {green, red + green, {1.0f - fg, fg - fr, fr - fb, fb}};
}

}  // namespace

void sampleTetra(const Lut3D& lut, const float* in, float* out) {
    const AxisPosition r = locate(in[0], lut.domainMin[0], lut.domainMax[0], lut.size);
    const AxisPosition g = locate(in[1], lut.domainMin[1], lut.domainMax[1], lut.size);
    const AxisPosition b = locate(in[2], lut.domainMin[2], lut.domainMax[2], lut.size);

    const std::ptrdiff_t red = latticeIndex(lut.size, 1, 0, 0);
    const std::ptrdiff_t green = latticeIndex(lut.size, 0, 1, 0);
    const std::ptrdiff_t blue = latticeIndex(lut.size, 0, 0, 1);
    const Tetrahedron t = choose(r.fraction, g.fraction, b.fraction, red, green, blue);

    const float* lowest = lut.data.data() + latticeIndex(lut.size, r.cell, g.cell, b.cell);
    const float* first = lowest + t.first;
    const float* second = lowest + t.second;
    const float* highest = lowest + red + green + blue;
    for (int k = 0; k < 3; ++k) {
        float sum = t.weight[1] * first[k];
        sum = mulAdd(t.weight[0], lowest[k], sum);
        sum = mulAdd(t.weight[2], second[k], sum);
        out[k] = mulAdd(t.weight[3], highest[k], sum);
    }
}

}  // namespace tw
