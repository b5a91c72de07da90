#include "host_sim/gpu/half.h"

#include <bit>
#include <cmath>

namespace host_sim {

std::uint16_t toHalf(float value) {
    const auto bits = std::bit_cast<std::uint32_t>(value);
    const auto sign = static_cast<std::uint16_t>(bits >> 16 & 0x8000U);
    const float magnitude = std::fabs(value);
    const auto with = [sign](std::uint32_t rest) {
        return static_cast<std::uint16_t>(sign | rest);
    };
    if (std::isnan(value)) return with(0x7E00U);
    if (magnitude >= 65520.0f) return with(0x7C00U);
    // Below the smallest normal value: steps of 2^-24. Rounding up to it gives its code.
    if (magnitude < 0x1p-14f)
        return with(static_cast<std::uint32_t>(std::nearbyint(magnitude * 0x1p24f)));
    // 10 of 23 fraction bits stay; a carry runs on into the exponent.
    const std::uint32_t fraction = bits & 0x7FFFFFFFU;
    const std::uint32_t rounded = fraction + 0xFFFU + (fraction >> 13 & 1U);
    return with((rounded >> 13) - (112U << 10));
}

float fromHalf(std::uint16_t bits) {
    const float sign = bits & 0x8000U ? -1.0f : 1.0f;
    const int exponent = bits >> 10 & 0x1F;
    const auto fraction = static_cast<float>(bits & 0x3FF);
    if (exponent == 31) return fraction == 0.0f ? sign * INFINITY : std::copysign(NAN, sign);
    if (exponent == 0) return sign * fraction * 0x1p-24f;
    return sign * std::ldexp(1.0f + fraction * 0x1p-10f, exponent - 15);
}

}  // namespace host_sim
