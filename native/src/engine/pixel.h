// What the apply functions and the pattern fills share about pixels.
#pragma once

#include <cstddef>
#include <cstdint>

#include "native/src/engine/mul_add.h"
#include "native/src/lut_engine.h"

namespace tw {

// Positions of the channels within a pixel: bytes of an Image8, floats of an ImageF.
struct ChannelMap {
    int r, g, b, a;
};

constexpr ChannelMap channelMap(std::int32_t order) {
    switch (order) {
        case kOrderBGRA:
            return {2, 1, 0, 3};
        case kOrderARGB:
            return {1, 2, 3, 0};
        default:
            return {0, 1, 2, 3};
    }
}

// Start of row y.
inline std::uint8_t* rowOf(const Image8& image, int y) {
    return image.pixels + y * image.rowBytes;
}

inline float* rowOf(const ImageF& image, int y) {
    auto* bytes = reinterpret_cast<std::uint8_t*>(image.pixels);
    return reinterpret_cast<float*>(bytes + y * image.rowBytes);
}

// The single-precision value nearest 1/255: bytes become floats by multiplication.
inline constexpr float kByteToFloat = 0.003921569f;

// A colour value 0..1 as a byte: rounded half up, clamped; NaN becomes 0.
inline std::uint8_t quantise8(float value) {
    const float q = mulAdd(value, 255.0f, 0.5f);
    if (q >= 255.0f) return 255;
    if (!(q > 0.0f)) return 0;
    return static_cast<std::uint8_t>(q);
}

}  // namespace tw
