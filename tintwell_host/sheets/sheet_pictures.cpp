#include "tintwell_host/sheets/sheet_pictures.h"

#include <OpenImageIO/imagebuf.h>
#include <OpenImageIO/imagebufalgo.h>

#include <algorithm>
#include <cmath>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

// The engine changes nothing through a view of its source.
tw::ImageF viewOf(const std::vector<float>& floats, const Picture& size) {
    return {.pixels = const_cast<float*>(floats.data()),
            .width = size.width,
            .height = size.height,
            .rowBytes = std::int64_t{size.width} * 16,
            .order = tw::kOrderRGBA};
}

// What 8 bits would show as the end of the range.
constexpr float kEnd = 0.5f / 255.0f;

float shown(float value) {
    return value > 0.0f ? std::min(value, 1.0f) : 0.0f;
}

void paint(float* pixel, unsigned colour) {
    for (int k = 0; k < 3; ++k)
        pixel[k] = static_cast<float>(colour >> (16 - 8 * k) & 0xFF) / 255.0f;
}

}  // namespace

Picture fitted(const Picture& picture, int width, int height) {
    const double scale = std::max(static_cast<double>(width) / picture.width,
                                  static_cast<double>(height) / picture.height);
    const int wide = std::max(width, static_cast<int>(std::lround(picture.width * scale)));
    const int high = std::max(height, static_cast<int>(std::lround(picture.height * scale)));
    const OIIO::ImageSpec from(picture.width, picture.height, 4, OIIO::TypeDesc::FLOAT);
    const OIIO::ImageBuf source(from, const_cast<float*>(picture.floats.data()));
    const OIIO::ImageBuf scaled =
        OIIO::ImageBufAlgo::resize(source, "", 0.0f, OIIO::ROI(0, wide, 0, high, 0, 1, 0, 4));
    Picture out;
    out.width = width;
    out.height = height;
    out.depth = Depth::kFloat;
    out.floats.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4);
    const int left = (wide - width) / 2;
    const int top = (high - height) / 2;
    if (!scaled.get_pixels(OIIO::ROI(left, left + width, top, top + height, 0, 1, 0, 4),
                           OIIO::TypeDesc::FLOAT, out.floats.data())) {
        throw Failure("cannot scale the picture: " + scaled.geterror());
    }
    return out;
}

Picture graded(const Picture& picture, const tw::Lut3D& lut, float amount) {
    Picture out = picture;
    tw::applyF(lut, viewOf(picture.floats, picture), viewOf(out.floats, out), amount);
    return out;
}

ClipMap clipMapOf(const Picture& before, const Picture& after) {
    ClipMap map{after};
    std::size_t low = 0;
    std::size_t high = 0;
    for (std::size_t at = 0; at < after.floats.size(); at += 4) {
        bool isLow = false;
        bool isHigh = false;
        for (std::size_t k = at; k < at + 3; ++k) {
            isLow |= before.floats[k] > kEnd && !(after.floats[k] > kEnd);
            isHigh |= before.floats[k] < 1.0f - kEnd && after.floats[k] >= 1.0f - kEnd;
        }
        float* pixel = &map.picture.floats[at];
        const float grey = 0.06f + 0.44f * (0.2126f * shown(pixel[0]) + 0.7152f * shown(pixel[1]) +
                                            0.0722f * shown(pixel[2]));
        std::fill_n(pixel, 3, grey);
        if (isLow) paint(pixel, kLowPaint);
        if (isHigh) paint(pixel, kHighPaint);
        low += isLow;
        high += isHigh;
    }
    const auto pixels = static_cast<double>(after.floats.size() / 4);
    map.low = static_cast<double>(low) / pixels;
    map.high = static_cast<double>(high) / pixels;
    return map;
}

}  // namespace program
