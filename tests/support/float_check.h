// Comparisons of floats that say what differed and where.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>

namespace twtest {

inline std::uint32_t bitsOf(float value) {
    return std::bit_cast<std::uint32_t>(value);
}

inline float fromBits(std::uint32_t bits) {
    return std::bit_cast<float>(bits);
}

inline std::string shown(float value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.9g (0x%08X)", static_cast<double>(value),
                  static_cast<unsigned>(bitsOf(value)));
    return text;
}

// Equal as results of arithmetic: the sign of a zero and the payload of a NaN depend on the order
// in which a compiler hands operands to the processor, so neither counts.
inline bool sameNumber(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

template <typename Same>
::testing::AssertionResult compareFloats(std::span<const float> expected,
                                         std::span<const float> actual, Same same) {
    if (expected.size() != actual.size()) {
        return ::testing::AssertionFailure()
               << "expected " << expected.size() << " values, got " << actual.size();
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (!same(expected[i], actual[i])) {
            return ::testing::AssertionFailure()
                   << "first difference at index " << i << ": expected " << shown(expected[i])
                   << ", got " << shown(actual[i]);
        }
    }
    return ::testing::AssertionSuccess();
}

inline ::testing::AssertionResult sameNumbers(std::span<const float> expected,
                                              std::span<const float> actual) {
    return compareFloats(expected, actual, sameNumber);
}

inline ::testing::AssertionResult sameBits(std::span<const float> expected,
                                           std::span<const float> actual) {
    return compareFloats(expected, actual, [](float a, float b) { return bitsOf(a) == bitsOf(b); });
}

// Written so that a NaN on either side fails.
inline ::testing::AssertionResult within(double tolerance, double expected, double actual) {
    const double difference = std::abs(expected - actual);
    if (!(difference <= tolerance)) {
        return ::testing::AssertionFailure() << "expected " << expected << ", got " << actual
                                             << ", off by " << difference << " of " << tolerance;
    }
    return ::testing::AssertionSuccess();
}

}  // namespace twtest
