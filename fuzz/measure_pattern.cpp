// Pictures that are said to be of the calibration pattern. Either any values, which must be refused
// with a reason or give a look that can be stored; or the pattern after a grade that keeps colours
// apart, with noise and perhaps mirrored, where the look or the refusal is known.
#include <cmath>
#include <cstdint>
#include <string>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "looks/measure.h"
#include "native/src/lut_text.h"
#include "tests/looks/pattern_pictures.h"

namespace {

using looks::Measurement;
using twfuzz::Input;
using twfuzz::require;
using twtest::FloatPicture;

bool measure(const FloatPicture& picture, const looks::PatternFrame& frame,
             Measurement& measurement) {
    std::string reason;
    const bool ok = looks::measurePattern(picture.view(), frame, measurement, reason);
    require(ok == reason.empty(), "a reason exactly when it is refused");
    require(reason.find('\n') == std::string::npos, "the reason is one sentence");
    return ok;
}

void checkStorable(const Measurement& measurement, int size) {
    const tw::Lut3D& lut = measurement.lut;
    require(lut.size == size && lut.data.size() == tw::latticeFloats(size), "a whole look");
    require(measurement.noise.size() * 3 == lut.data.size(), "the noise of each patch");
    for (const float value : lut.data)
        require(std::isfinite(value), "numbers only");
    tw::Lut3D back;
    require(tw::parseEmbeddedText(tw::toEmbeddedText(lut, 1, "x"), back, nullptr), "the text");
}

// Values that repeat, so that a short input fills a picture with something that has patches.
void measureAnything(Input& input) {
    const int width = static_cast<int>(input.below(96));
    const int height = static_cast<int>(input.below(96));
    looks::PatternFrame frame{2 + static_cast<int>(input.below(8)), 0, 0};
    if (input.flag()) {
        frame.width = 1 + static_cast<int>(input.below(60000));
        frame.height = 1 + static_cast<int>(input.below(60000));
    }
    const auto across = static_cast<std::size_t>(1 + input.below(64));
    std::vector<float> values;
    const bool any = input.flag();
    while (!input.empty())
        values.push_back(any ? input.number<float>() : static_cast<float>(input.byte()) / 255.0f);
    if (values.empty()) values.push_back(0.0f);
    FloatPicture picture = twtest::blankPicture(width, height);
    for (std::size_t i = 0; i < picture.rgba.size(); ++i)
        picture.rgba[i] = values[(i / (across * 4) * 3 + i % 4) % values.size()];
    Measurement measurement;
    if (measure(picture, frame, measurement)) checkStorable(measurement, frame.size);
}

// Rising or falling in each channel, from half to the full range.
struct KnownGrade {
    explicit KnownGrade(Input& input) {
        for (int channel = 0; channel < 3; ++channel) {
            const float span = 0.5f + static_cast<float>(input.byte()) / 512.0f;
            slope[channel] = input.flag() ? span : -span;
            offset[channel] = static_cast<float>(input.byte()) / 128.0f - 1.0f;
            power[channel] = 0.5f + static_cast<float>(input.byte()) / 128.0f;
        }
    }
    void operator()(float* rgb) const {
        for (int channel = 0; channel < 3; ++channel)
            rgb[channel] =
                slope[channel] * std::pow(rgb[channel], power[channel]) + offset[channel];
    }
    float slope[3];
    float offset[3];
    float power[3];
};

void measureKnown(Input& input) {
    const int size = 2 + static_cast<int>(input.below(4));
    const int width = 78 + static_cast<int>(input.below(40));
    const int height = 78 + static_cast<int>(input.below(40));
    const KnownGrade grade(input);
    const float noise = static_cast<float>(input.below(16)) / 1024.0f;
    const bool mirrored = input.flag();
    FloatPicture picture = twtest::graded(twtest::patternPicture(size, width, height), grade);
    picture = twtest::noisy(picture, noise, input.number<std::uint64_t>());
    const looks::PatternFrame frame{size, 0, 0};
    Measurement measurement;
    if (mirrored && size >= 4) {
        picture =
            twtest::rearranged(picture, width, height, [=](int& x, int&) { x = width - 1 - x; });
        require(!measure(picture, frame, measurement), "a mirrored pattern is refused");
        return;
    }
    if (mirrored) return;
    require(measure(picture, frame, measurement), "the pattern is measured");
    checkStorable(measurement, size);
    for (std::size_t point = 0; point < measurement.noise.size(); ++point) {
        const auto steps = static_cast<std::size_t>(size);
        const float k = 1.0f / static_cast<float>(size - 1);
        float expected[3] = {k * static_cast<float>(point % steps),
                             k * static_cast<float>(point / steps % steps),
                             k * static_cast<float>(point / steps / steps)};
        grade(expected);
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const float off = measurement.lut.data[point * 3 + channel] - expected[channel];
            require(std::fabs(off) <= noise * 1.0001f, "the look's points, but for the noise");
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    if (input.flag()) {
        measureKnown(input);
    } else {
        measureAnything(input);
    }
    return 0;
}
