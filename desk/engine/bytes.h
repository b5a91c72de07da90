// Memory that JavaScript fills and reads.
//
// Threads: the module has one, here and in the other headers of this folder.
#pragma once

#include <emscripten/val.h>

#include <string>
#include <vector>

namespace desk {

// JavaScript's counts are doubles. Throws std::bad_alloc for what no memory here can hold.
std::size_t countOf(double count);

// Both throw std::bad_alloc or std::length_error where there is not enough memory. A view is valid
// until memory is next allocated here.

class Bytes {
public:
    explicit Bytes(double count) : bytes(countOf(count), '\0') {}
    explicit Bytes(std::string&& text) : bytes(std::move(text)) {}

    emscripten::val view();
    std::uint8_t* data() { return reinterpret_cast<std::uint8_t*>(bytes.data()); }

    std::string bytes;
};

class Floats {
public:
    explicit Floats(double count) : values(countOf(count)) {}
    explicit Floats(std::vector<float>&& values) : values(std::move(values)) {}

    emscripten::val view();

    std::vector<float> values;
};

}  // namespace desk
