// Half floats of GPU frames.
#pragma once

#include <cstdint>

namespace host_sim {

// Rounded to the nearest, ties to even; past the range: infinity.
std::uint16_t toHalf(float value);
float fromHalf(std::uint16_t bits);

}  // namespace host_sim
