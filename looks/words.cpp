#include "looks/words.h"

#include <cmath>
#include <cstdio>

#include "native/src/c_locale.h"

namespace looks {

std::string spell(float value) {
    const tw::CLocaleScope cNumbers;
    char text[32];
    // Without the sign of a zero.
    std::snprintf(text, sizeof text, "%.3g", static_cast<double>(value) + 0.0);
    return text;
}

std::string spell(const Colour& colour) {
    return spell(colour[0]) + " " + spell(colour[1]) + " " + spell(colour[2]);
}

std::string spell(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string inSteps(float difference) {
    const float steps = std::round(difference * 2550.0f) / 10.0f;
    return spell(steps) + (steps == 1.0f ? " step of 8 bits" : " steps of 8 bits");
}

}  // namespace looks
