// Grades a picture of pseudo-random colours with a strongly non-linear LUT, 8 bits and float, and
// writes the results' bytes to OUT.8 and OUT.f: grade_picture OUT. Every input is exact, so that
// two processors can only differ in how they grade.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"

namespace {

constexpr int kSize = 33;
constexpr int kWidth = 320;
constexpr int kHeight = 240;
constexpr std::size_t kChannels = std::size_t{kWidth} * kHeight * 4;

// Multiples of 2^-16 from `from` on, `range` wide: the same floats on every machine.
float exact(std::mt19937& random, float from, float range) {
    return from + range * static_cast<float>(random() & 0xFFFF) / 65536.0f;
}

tw::Lut3D makeLut(std::mt19937& random) {
    tw::Lut3D lut;
    lut.size = kSize;
    lut.data.resize(tw::latticeFloats(kSize));
    for (float& value : lut.data)
        value = exact(random, -0.25f, 1.5f);
    return lut;
}

template <class Value>
void write(const std::string& path, const std::vector<Value>& values) {
    std::ofstream out(path, std::ios::binary);
    out.write(reinterpret_cast<const char*>(values.data()),
              static_cast<std::streamsize>(values.size() * sizeof(Value)));
    out.close();
    if (!out) {
        std::fprintf(stderr, "cannot write %s\n", path.c_str());
        std::exit(EXIT_FAILURE);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: grade_picture OUT\n", stderr);
        return EXIT_FAILURE;
    }
    const std::string out = arguments[1];
    std::mt19937 random(1);
    const tw::Lut3D lut = makeLut(random);
    constexpr float amount = 0.8125f;

    std::vector<std::uint8_t> bytes(kChannels);
    for (std::uint8_t& value : bytes)
        value = static_cast<std::uint8_t>(random());
    const tw::Image8 image8{bytes.data(), kWidth, kHeight, kWidth * 4, tw::kOrderBGRA};
    tw::apply8(lut, image8, image8, amount);
    write(out + ".8", bytes);

    std::vector<float> floats(kChannels);
    for (float& value : floats)
        value = exact(random, -0.125f, 1.25f);
    const tw::ImageF imageF{floats.data(), kWidth, kHeight, kWidth * std::int64_t{16},
                            tw::kOrderBGRA};
    tw::applyF(lut, imageF, imageF, amount);
    write(out + ".f", floats);
    return EXIT_SUCCESS;
}
