// A TWLUT text where it lies in a parameter's bytes. Internal to the readers of the text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

namespace tw {

// Owns nothing; the bytes must outlive it.
struct TextView {
    const unsigned char* first = nullptr;
    std::size_t length = 0;  // characters
    std::size_t stride = 1;  // bytes from one character to the next: 1, or 2 in 16-bit units

    static TextView of(const std::string& text) {
        return {reinterpret_cast<const unsigned char*>(text.data()), text.size(), 1};
    }

    // The first `most` characters, or all where there are fewer.
    std::string head(std::size_t most) const {
        const std::size_t count = std::min(most, length);
        if (stride == 1) return {reinterpret_cast<const char*>(first), count};
        std::string text(count, '\0');
        for (std::size_t i = 0; i < count; ++i)
            text[i] = static_cast<char>(first[2 * i]);
        return text;
    }

    // What follows the first `count` characters, of which there are as many.
    TextView from(std::size_t count) const {
        return {first + count * stride, length - count, stride};
    }
};

// The text that tw::embeddedText gives, without a copy; of length 0 when the bytes hold none.
TextView textIn(const void* bytes, unsigned long count);

}  // namespace tw
