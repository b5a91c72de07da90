// .cube texts for tests that need any.
#pragma once

#include <cstddef>
#include <string>

namespace twtest {

// `size` points per axis: the given lines, then the values 0 and 1 by turns.
inline std::string cube(int size, const std::string& lines = "") {
    std::string text = lines + "LUT_3D_SIZE " + std::to_string(size) + "\n";
    for (int point = 0; point < size * size * size; ++point)
        text += point % 2 == 0 ? "0 0 0\n" : "1 1 1\n";
    return text;
}

// The same padded with a comment to exactly that many bytes.
inline std::string cubeOfBytes(int size, std::size_t bytes) {
    const std::string text = cube(size);
    return "#" + std::string(bytes - text.size() - 2, 'x') + "\n" + text;
}

}  // namespace twtest
