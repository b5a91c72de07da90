// BGRA pictures in device buffers, as 32-bit or half floats, and the values that go into them.
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tests/gpu/test_device.h"

namespace twtest {

// The compiler's own half float: what the tests compare the device's conversions with.
inline std::uint16_t toHalf(float value) {
    return std::bit_cast<std::uint16_t>(static_cast<_Float16>(value));
}

inline float fromHalf(std::uint16_t bits) {
    return static_cast<float>(std::bit_cast<_Float16>(bits));
}

// What a value becomes when it is stored in a picture.
inline float stored(float value, bool half) {
    return half ? fromHalf(toHalf(value)) : value;
}

struct Shape {
    int width = 0;
    int height = 0;
    int pitch = 0;  // pixels from row to row
    bool half = false;

    std::size_t channelBytes() const { return half ? 2 : 4; }
    std::size_t bytes() const {
        return static_cast<std::size_t>(pitch) * static_cast<std::size_t>(height) * 4 *
               channelBytes();
    }
    std::size_t offset(int x, int y, int channel) const {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(pitch) * 4 +
                static_cast<std::size_t>(x) * 4 + static_cast<std::size_t>(channel)) *
               channelBytes();
    }
};

constexpr unsigned char kPadding = 0xA5;

// A picture's bytes; padding behind the rows is canary bytes. Channels in memory order: blue,
// green, red, alpha.
class Picture {
public:
    explicit Picture(const Shape& pictureShape)
        : shape(pictureShape), bytes(pictureShape.bytes(), kPadding) {}

    float at(int x, int y, int channel) const {
        const unsigned char* from = bytes.data() + shape.offset(x, y, channel);
        if (shape.half) {
            std::uint16_t bits;
            std::memcpy(&bits, from, 2);
            return fromHalf(bits);
        }
        float value;
        std::memcpy(&value, from, 4);
        return value;
    }

    void set(int x, int y, int channel, float value) {
        unsigned char* to = bytes.data() + shape.offset(x, y, channel);
        const std::uint16_t bits = toHalf(value);
        if (shape.half) {
            std::memcpy(to, &bits, 2);
        } else {
            std::memcpy(to, &value, 4);
        }
    }

    // Whether all bytes behind the rows are canaries still.
    ::testing::AssertionResult paddingIntact() const {
        for (int y = 0; y < shape.height; ++y) {
            for (std::size_t i = shape.offset(shape.width, y, 0); i < shape.offset(0, y + 1, 0);
                 ++i) {
                if (bytes[i] != kPadding)
                    return ::testing::AssertionFailure() << "byte " << i << " behind row " << y;
            }
        }
        return ::testing::AssertionSuccess();
    }

    Shape shape;
    std::vector<unsigned char> bytes;
};

inline Handle upload(const Device& device, const Picture& picture) {
    return device.buffer(picture.bytes.data(), picture.bytes.size());
}

inline Picture download(const Handle& buffer, const Shape& shape) {
    Picture picture(shape);
    std::memcpy(picture.bytes.data(), twmetal::Contents(buffer.get()), picture.bytes.size());
    return picture;
}

}  // namespace twtest
