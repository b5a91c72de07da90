// How far the kernel's picture is from the CPU's.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

#include "tests/gpu/gpu_picture.h"

namespace twtest {

// Bits agree, or both are not numbers: what a NaN carries depends on the order of operands.
inline bool sameValue(float a, float b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

struct Differences {
    double largest = 0.0;  // infinite with a NaN or an infinity on one side only
    long unequal = 0;      // values whose bits differ
    std::string first;     // where the first unequal value is

    void add(float expected, float actual, int x, int y, int channel) {
        if (sameValue(expected, actual)) return;
        if (unequal++ == 0) note(expected, actual, x, y, channel);
        const double distance =
            std::abs(static_cast<double>(expected) - static_cast<double>(actual));
        largest = std::isfinite(distance) ? std::max(largest, distance)
                                          : std::numeric_limits<double>::infinity();
    }

private:
    void note(float expected, float actual, int x, int y, int channel) {
        char text[160];
        std::snprintf(text, sizeof text, "pixel (%d, %d) channel %d: expected %.9g, got %.9g", x, y,
                      channel, static_cast<double>(expected), static_cast<double>(actual));
        first = text;
    }
};

inline Differences compare(const Picture& expected, const Picture& actual) {
    Differences differences;
    for (int y = 0; y < expected.shape.height; ++y) {
        for (int i = 0; i < expected.shape.width * 4; ++i) {
            const int x = i / 4, channel = i % 4;
            differences.add(expected.at(x, y, channel), actual.at(x, y, channel), x, y, channel);
        }
    }
    return differences;
}

}  // namespace twtest
