// What writing a LUT as TWLUT text and reading it back does to its samples.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "native/src/lut_engine.h"
#include "tests/support/float_check.h"

namespace twtest {

// Half a code step, plus the roundings of the reader: the step (counted up to 65535 times) and the
// sum.
inline ::testing::AssertionResult samplesKept(const tw::Lut3D& lut, const tw::Lut3D& back, float lo,
                                              float hi) {
    if (lut.size != back.size || lut.data.size() != back.data.size())
        return ::testing::AssertionFailure() << "size " << back.size << ", " << back.data.size();
    const double range = static_cast<double>(hi) - static_cast<double>(lo);
    const double largest =
        std::max(std::abs(static_cast<double>(lo)), std::abs(static_cast<double>(hi)));
    const auto least = static_cast<double>(std::numeric_limits<float>::denorm_min());
    const double tolerance =
        range / 65535 / 2 + (3 * range + 2 * largest) / 16777216 + 32768 * least;
    for (std::size_t i = 0; i < lut.data.size(); ++i) {
        const auto close =
            within(tolerance, static_cast<double>(lut.data[i]), static_cast<double>(back.data[i]));
        if (!close)
            return ::testing::AssertionFailure() << "index " << i << ": " << close.message();
    }
    return ::testing::AssertionSuccess();
}

}  // namespace twtest
