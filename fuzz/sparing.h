// Limits costly inputs: a text of twenty bytes may ask for a LUT of 200 MB, which takes as long as
// ten thousand other inputs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace twfuzz {

// Points per axis up to which a LUT costs no more than what else is done with an input.
inline constexpr std::int32_t kCheapSize = 33;

// The largest size that a line of a .cube text announces; 0 when none does.
inline std::int32_t announcedSize(const std::string& text) {
    const std::string keyword = "LUT_3D_SIZE";
    std::int32_t largest = 0;
    for (std::size_t at = 0; (at = text.find(keyword, at)) != std::string::npos;) {
        at += keyword.size();
        const std::int32_t size = std::atoi(text.c_str() + at);
        if (size <= 256) largest = std::max(largest, size);
    }
    return largest;
}

// Whether to leave out this input, which asks for a LUT of `size` points: all but the first few
// large ones of a process and a few after them. A single input is always taken.
inline bool leaveOut(std::int32_t size) {
    static unsigned large = 0;
    if (size <= kCheapSize) return false;
    return ++large > 4 && large % 256 != 0;
}

}  // namespace twfuzz
