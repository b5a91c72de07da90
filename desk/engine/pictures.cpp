#include "desk/engine/pictures.h"

#include <algorithm>

#include "looks/scene.h"
#include "native/src/lut_text.h"

namespace desk {
namespace {

constexpr int kMostPixelsASide = 65535;

void checkSize(int width, int height) {
    if (width < 1 || height < 1 || width > kMostPixelsASide || height > kMostPixelsASide)
        throw Refusal("a picture is 1 to 65535 pixels wide and high");
}

void checkSize(std::size_t values, int width, int height) {
    checkSize(width, height);
    if (values / 4 != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) ||
        values % 4 != 0)
        throw Refusal("the picture does not hold width x height pixels");
}

tw::Image8 imageOf(Bytes& pixels, int width, int height) {
    return {pixels.data(), width, height, std::int64_t{width} * 4, tw::kOrderRGBA};
}

tw::ImageF imageOf(Floats& pixels, int width, int height) {
    return {pixels.values.data(), width, height, std::int64_t{width} * 16, tw::kOrderRGBA};
}

void checkSteps(int steps) {
    if (steps < 2 || steps > tw::kMostPatternSteps)
        throw Refusal("a pattern has 2 to 64 steps a channel");
}

float fractionOf(double amount) {
    if (!(amount >= 0.0 && amount <= 100.0)) throw Refusal("an Amount is 0 to 100");
    return static_cast<float>(amount / 100.0);
}

}  // namespace

void render8(Bytes& pixels, int width, int height, const Look& look, double amount) {
    checkSize(pixels.bytes.size(), width, height);
    const float fraction = fractionOf(amount);
    const tw::Image8 image = imageOf(pixels, width, height);
    const tw::LutKind kind = tw::kindOf(&look.lut());
    if (kind == tw::LutKind::kPattern) tw::fillProbe8(look.lut().probe, image);
    if (kind == tw::LutKind::kLut && fraction > 0.0f)
        tw::apply8(look.lut(), image, image, fraction);
}

void renderF(Floats& pixels, int width, int height, const Look& look, double amount) {
    checkSize(pixels.values.size(), width, height);
    const float fraction = fractionOf(amount);
    const tw::ImageF image = imageOf(pixels, width, height);
    const tw::LutKind kind = tw::kindOf(&look.lut());
    if (kind == tw::LutKind::kPattern) tw::fillProbeF(look.lut().probe, image);
    if (kind == tw::LutKind::kLut && fraction > 0.0f)
        tw::applyF(look.lut(), image, image, fraction);
}

std::unique_ptr<Bytes> pattern(int steps, int width, int height) {
    checkSteps(steps);
    checkSize(width, height);
    auto pixels = std::make_unique<Bytes>(static_cast<double>(width) * height * 4);
    tw::fillProbe8(steps, imageOf(*pixels, width, height));
    return pixels;
}

std::unique_ptr<Bytes> scene(int width, int height) {
    checkSize(width - 1, height - 1);
    const std::vector<float> values = looks::computedScene(width, height);
    auto pixels = std::make_unique<Bytes>(static_cast<double>(values.size()));
    std::transform(values.begin(), values.end(), pixels->data(),
                   [](float value) { return static_cast<std::uint8_t>(value * 255.0f + 0.5f); });
    return pixels;
}

looks::Measurement measure(const Floats& pixels, int width, int height,
                           const looks::PatternFrame& frame) {
    checkSize(pixels.values.size(), width, height);
    checkSteps(frame.size);
    if (frame.width != 0 || frame.height != 0) checkSize(frame.width, frame.height);
    looks::Measurement measurement;
    std::string reason;
    if (!looks::measurePattern({pixels.values.data(), width, height}, frame, measurement, reason))
        throw Refusal(std::move(reason));
    return measurement;
}

}  // namespace desk
