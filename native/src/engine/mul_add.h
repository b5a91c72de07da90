// The one multiply-add of the colour maths.
#pragma once

#if defined(__aarch64__)
#include <cmath>
#endif

namespace tw {

// a * b + c, rounded once on 64-bit Arm (fused) and twice on x86-64. The choice is made here, by
// processor and not by compiler or instruction set, so that every machine of one family, old or
// new, gives the same picture; contraction is off everywhere else.
inline float mulAdd(float a, float b, float c) {
#if defined(__aarch64__)
    return std::fma(a, b, c);
#else
    return a * b + c;
#endif
}

}  // namespace tw
