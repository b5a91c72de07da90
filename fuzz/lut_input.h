// Small LUTs and rows of values from a fuzz input, valid, but with extreme values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "fuzz/input.h"
#include "native/src/lut_engine.h"

namespace twfuzz {

// Values repeated until there are enough of them, each round from another start, so that a few
// values still give an irregular picture.
template <typename Value>
std::vector<Value> spread(Input& input, std::size_t most, std::size_t wanted) {
    std::vector<Value> given(1 + input.below(static_cast<std::uint32_t>(most)));
    for (Value& value : given)
        value = input.number<Value>();
    std::vector<Value> values(wanted);
    for (std::size_t i = 0; i < wanted; ++i)
        values[i] = given[(i + i / given.size()) % given.size()];
    return values;
}

// 2..9 points, any samples, and the default domain or any one that rises, as a .cube file may have.
inline tw::Lut3D takeLut(Input& input) {
    tw::Lut3D lut;
    lut.size = static_cast<std::int32_t>(2 + input.below(8));
    const std::uint32_t ownDomains = input.below(8);
    for (std::uint32_t k = 0; k < 3; ++k) {
        if ((ownDomains >> k) % 2 == 0) continue;
        const auto low = input.number<float>();
        const auto high = input.number<float>();
        if (!(high > low)) continue;
        lut.domainMin[k] = low;
        lut.domainMax[k] = high;
    }
    lut.data = spread<float>(input, 32, tw::latticeFloats(lut.size));
    return lut;
}

}  // namespace twfuzz
