// LUTs and input colours on which the kernel is compared with the CPU.
#pragma once

#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/luts.h"
#include "tests/support/random.h"

namespace twtest {

// Red, green, blue, alpha.
struct Colour {
    float channel[4];
};

inline float channelOf(const tw::Lut3D& lut, int channel, double place) {
    const double low = static_cast<double>(lut.domainMin[channel]);
    const double high = static_cast<double>(lut.domainMax[channel]);
    return static_cast<float>(low + place * (high - low));
}

// A colour at these places of the LUT's domain, 0..1.
inline Colour placed(const tw::Lut3D& lut, double r, double g, double b) {
    return {{channelOf(lut, 0, r), channelOf(lut, 1, g), channelOf(lut, 2, b), 0.5f}};
}

// Fractions in all six orders and in all orders with ties, in a few cells each.
inline std::vector<Colour> tetrahedra(const tw::Lut3D& lut) {
    const double parts[] = {0.0, 0.25, 0.5, 0.75};
    const double cells = static_cast<double>(lut.size - 1);
    std::vector<Colour> colours;
    for (const double cell : {0.0, std::floor(cells / 2), cells - 1}) {
        for (const double r : parts) {
            for (const double g : parts) {
                for (const double b : parts)
                    colours.push_back(
                        placed(lut, (cell + r) / cells, (cell + g) / cells, (cell + b) / cells));
            }
        }
    }
    return colours;
}

// Lattice points, the corners and the top of the domain among them.
inline std::vector<Colour> latticePoints(const tw::Lut3D& lut) {
    Random random(11);
    const double cells = static_cast<double>(lut.size - 1);
    std::vector<Colour> colours;
    for (int corner = 0; corner < 8; ++corner)
        colours.push_back(placed(lut, corner & 1, corner >> 1 & 1, corner >> 2));
    for (int i = 0; i < 200; ++i)
        colours.push_back(placed(lut, random.below(lut.size) / cells,
                                 random.below(lut.size) / cells, random.below(lut.size) / cells));
    return colours;
}

// Everything that is not an ordinary colour, in every channel, alpha included.
inline std::vector<Colour> specials() {
    using Limits = std::numeric_limits<float>;
    const float values[] = {Limits::quiet_NaN(),
                            Limits::infinity(),
                            -Limits::infinity(),
                            0.0f,
                            -0.0f,
                            Limits::denorm_min(),
                            -Limits::denorm_min(),
                            1e-40f,
                            6e-8f,
                            Limits::min(),
                            1.0f,
                            Limits::max(),
                            -Limits::max(),
                            1e30f,
                            -1e30f,
                            65504.0f,
                            65520.0f,
                            -0.001f,
                            1.001f,
                            0.5f};
    std::vector<Colour> colours;
    for (const float a : values) {
        for (const float b : values) {
            colours.push_back({{a, b, 0.25f, 1.0f}});
            colours.push_back({{0.25f, a, b, a}});
            colours.push_back({{b, 0.75f, a, b}});
        }
    }
    return colours;
}

// Noise across and beyond the domain.
inline std::vector<Colour> noise(const tw::Lut3D& lut, int count) {
    Random random(7);
    std::vector<Colour> colours;
    for (int i = 0; i < count; ++i) {
        Colour colour = placed(lut, static_cast<double>(random.between(-0.5f, 1.5f)),
                               static_cast<double>(random.between(-0.5f, 1.5f)),
                               static_cast<double>(random.between(-0.5f, 1.5f)));
        colour.channel[3] = random.between(0.0f, 1.0f);
        colours.push_back(colour);
    }
    return colours;
}

}  // namespace twtest
