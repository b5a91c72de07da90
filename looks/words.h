// Numbers in sentences.
#pragma once

#include <cstddef>
#include <string>

#include "looks/neutral_axis.h"

namespace looks {

// With up to three significant digits and a full stop, whatever the locale: "0.25", "1", "1e+06".
std::string spell(float value);
// "0.1 0.2 0.3".
std::string spell(const Colour& colour);
// "1 point", "2 points".
std::string spell(std::size_t count, const char* one, const char* many);

// A difference of outputs in the steps of 8 bits: "12.8 steps of 8 bits".
std::string inSteps(float difference);

}  // namespace looks
