// .cube texts of LUTs that the tests make.
#pragma once

#include <functional>

#include "looks/neutral_axis.h"
#include "tests/support/luts.h"

namespace looks_test {

// The LUT that makes `change(in)` of every colour.
inline tw::Lut3D lutOf(std::int32_t size,
                       const std::function<looks::Colour(looks::Colour)>& change) {
    tw::Lut3D lut = twtest::identityLut(size);
    for (std::size_t at = 0; at < lut.data.size(); at += 3) {
        const looks::Colour out = change({lut.data[at], lut.data[at + 1], lut.data[at + 2]});
        std::copy(out.begin(), out.end(), lut.data.begin() + static_cast<std::ptrdiff_t>(at));
    }
    return lut;
}

// `change` of each channel for itself.
inline tw::Lut3D curveOf(std::int32_t size, const std::function<float(float)>& change) {
    return lutOf(size, [&change](looks::Colour in) {
        return looks::Colour{change(in[0]), change(in[1]), change(in[2])};
    });
}

}  // namespace looks_test
