// Memory that JavaScript fills and reads.
#pragma once

#include <emscripten/val.h>

#include <string>
#include <vector>

namespace desk {

// Both throw std::bad_alloc or std::length_error where there is not enough memory. A view is valid
// until memory is next allocated here.

class Bytes {
public:
    explicit Bytes(double count) : bytes(static_cast<std::size_t>(count), '\0') {}
    explicit Bytes(std::string&& text) : bytes(std::move(text)) {}

    emscripten::val view();
    std::uint8_t* data() { return reinterpret_cast<std::uint8_t*>(bytes.data()); }

    std::string bytes;
};

class Floats {
public:
    explicit Floats(double count) : values(static_cast<std::size_t>(count)) {}
    explicit Floats(std::vector<float>&& values) : values(std::move(values)) {}

    emscripten::val view();

    std::vector<float> values;
};

}  // namespace desk
