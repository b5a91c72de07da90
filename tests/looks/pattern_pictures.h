// Pictures of the calibration pattern, drawn by the engine, for tests of what measures them.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "looks/measure.h"
#include "native/src/lut_engine.h"
#include "tests/support/random.h"

namespace twtest {

struct FloatPicture {
    int width = 0;
    int height = 0;
    std::vector<float> rgba;

    float* pixel(int x, int y) {
        return &rgba[(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                      static_cast<std::size_t>(x)) *
                     4];
    }
    looks::Picture view() const { return {rgba.data(), width, height}; }
};

inline FloatPicture blankPicture(int width, int height, float value = 0.0f) {
    const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    return {width, height, std::vector<float>(pixels * 4, value)};
}

inline FloatPicture patternPicture(int size, int width, int height) {
    FloatPicture picture = blankPicture(width, height);
    tw::fillProbeF(size, {picture.rgba.data(), width, height, static_cast<std::int64_t>(width) * 16,
                          tw::kOrderRGBA});
    return picture;
}

// Changes the colour of every pixel.
using Grade = std::function<void(float* rgb)>;

inline FloatPicture graded(FloatPicture picture, const Grade& grade) {
    for (std::size_t at = 0; at < picture.rgba.size(); at += 4)
        grade(&picture.rgba[at]);
    return picture;
}

// `picture` from (x, y) on, in another size: for turned, cropped and barred ones. What lies outside
// has the value `outside`.
inline FloatPicture rearranged(FloatPicture picture, int width, int height,
                               const std::function<void(int& x, int& y)>& from,
                               float outside = 0.0f) {
    FloatPicture result = blankPicture(width, height, outside);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            int fromX = x;
            int fromY = y;
            from(fromX, fromY);
            const bool isInside =
                fromX >= 0 && fromX < picture.width && fromY >= 0 && fromY < picture.height;
            if (!isInside) continue;
            const float* pixel = picture.pixel(fromX, fromY);
            std::copy(pixel, pixel + 4, result.pixel(x, y));
        }
    }
    return result;
}

// Adds up to `most` to every value, or takes it away.
inline FloatPicture noisy(FloatPicture picture, float most, std::uint64_t seed) {
    Random random(seed);
    for (float& value : picture.rgba)
        value += random.between(-most, most);
    return picture;
}

}  // namespace twtest
