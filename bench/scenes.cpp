#include "bench/scenes.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>

namespace bench {
namespace {

constexpr std::size_t kAlignment = 64;

template <typename Channel>
Channel* aligned(std::vector<Channel>& memory) {
    const auto address = reinterpret_cast<std::uintptr_t>(memory.data());
    const std::uintptr_t skip = (kAlignment - address % kAlignment) % kAlignment;
    return memory.data() + skip / sizeof(Channel);
}

std::size_t channelsOf(int width, int height) {
    return static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
}

// Calls put(first channel's index, colour) for every pixel.
template <typename Put>
void paint(int width, int height, Colours colours, Put put) {
    std::minstd_rand random(7);
    std::uniform_real_distribution<float> noise(-0.03f, 0.03f);
    std::uniform_real_distribution<float> uniform(0.0f, 1.0f);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            float colour[3];
            for (int k = 0; k < 3; ++k) {
                const double phase = x * (0.004 + 0.0013 * k) + y * (0.003 + 0.0007 * k) + k;
                const auto wave = static_cast<float>(0.5 + 0.45 * std::sin(phase));
                colour[k] = colours == Colours::kRandom ? uniform(random) : wave + noise(random);
            }
            put((static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                 static_cast<std::size_t>(x)) *
                    4,
                colour);
        }
    }
}

}  // namespace

tw::Lut3D randomLut(std::int32_t size) {
    tw::Lut3D lut;
    lut.size = size;
    lut.data.resize(tw::latticeFloats(size));
    std::minstd_rand random(11);
    std::uniform_real_distribution<float> uniform(0.0f, 1.0f);
    for (float& value : lut.data)
        value = uniform(random);
    return lut;
}

std::string cubeText(const tw::Lut3D& lut) {
    std::string text = "TITLE \"Random\"\nLUT_3D_SIZE " + std::to_string(lut.size) + "\n";
    text.reserve(text.size() + lut.data.size() * 9);
    char line[64];
    for (std::size_t i = 0; i < lut.data.size(); i += 3) {
        const int length = std::snprintf(
            line, sizeof line, "%.6f %.6f %.6f\n", static_cast<double>(lut.data[i]),
            static_cast<double>(lut.data[i + 1]), static_cast<double>(lut.data[i + 2]));
        text.append(line, static_cast<std::size_t>(length));
    }
    return text;
}

FrameF::FrameF(int width, int height)
    : memory_(channelsOf(width, height) + kAlignment / sizeof(float)) {
    image = {aligned(memory_), width, height, std::int64_t{16} * width, tw::kOrderBGRA};
}

FrameF::FrameF(int width, int height, Colours colours) : FrameF(width, height) {
    paint(width, height, colours, [this](std::size_t at, const float(&colour)[3]) {
        std::copy_n(colour, 3, image.pixels + at);
        image.pixels[at + 3] = 1.0f;
    });
}

Frame8::Frame8(int width, int height) : memory_(channelsOf(width, height) + kAlignment) {
    image = {aligned(memory_), width, height, std::int64_t{4} * width, tw::kOrderBGRA};
}

Frame8::Frame8(int width, int height, Colours colours) : Frame8(width, height) {
    paint(width, height, colours, [this](std::size_t at, const float(&colour)[3]) {
        std::transform(colour, colour + 3, image.pixels + at, [](float value) {
            return static_cast<std::uint8_t>(std::clamp(value, 0.0f, 1.0f) * 255.0f + 0.5f);
        });
        image.pixels[at + 3] = 255;
    });
}

}  // namespace bench
