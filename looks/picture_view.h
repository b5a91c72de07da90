// A picture as a measurement reads it.
#pragma once

#include <cstddef>

namespace looks {

// A view: owns nothing. Red, green, blue, alpha for each pixel, rows top down without padding; 1 is
// white, and values are not limited. The values are taken as they are, alpha is not looked at.
struct Picture {
    const float* rgba = nullptr;
    int width = 0;
    int height = 0;
};

// Red, green, blue of pixel (x, y).
inline const float* pixelOf(const Picture& picture, int x, int y) {
    const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
    return picture.rgba + (row + static_cast<std::size_t>(x)) * 4;
}

}  // namespace looks
