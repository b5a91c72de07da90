#include "tintwell_host/frame_copy.h"

#include <algorithm>
#include <cstddef>

namespace program {
namespace {

// Calls visit(x, y, first sample of that pixel) in a picture's order.
template <typename Visit>
void forEachPixel(int width, int height, Visit visit) {
    std::size_t at = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x, at += 4)
            visit(x, y, at);
    }
}

}  // namespace

host_sim::Frame frameOf(const Picture& picture, PrPixelFormat format) {
    host_sim::Frame frame(format, picture.width, picture.height);
    forEachPixel(picture.width, picture.height, [&](int x, int y, std::size_t at) {
        if (picture.depth == Depth::k8) {
            const std::uint8_t* p = &picture.bytes[at];
            frame.setPixel8(x, y, {p[0], p[1], p[2], p[3]});
        } else {
            const float* p = &picture.floats[at];
            frame.setPixelF(x, y, {p[0], p[1], p[2], p[3]});
        }
    });
    return frame;
}

Picture pictureOf(const host_sim::Frame& frame, const Picture& like) {
    Picture picture;
    picture.width = frame.width();
    picture.height = frame.height();
    picture.depth = like.depth;
    picture.hasAlpha = like.hasAlpha;
    picture.metadata = like.metadata;
    const auto pixels =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    if (like.depth == Depth::k8) {
        picture.bytes.resize(pixels * 4);
    } else {
        picture.floats.resize(pixels * 4);
    }
    forEachPixel(picture.width, picture.height, [&](int x, int y, std::size_t at) {
        if (like.depth == Depth::k8) {
            const host_sim::Rgba8 rgba = frame.pixel8(x, y);
            std::copy(rgba.begin(), rgba.end(), &picture.bytes[at]);
        } else {
            const host_sim::RgbaF rgba = frame.pixelF(x, y);
            std::copy(rgba.begin(), rgba.end(), &picture.floats[at]);
        }
    });
    return picture;
}

}  // namespace program
