#include "tintwell_host/session/frame_copy.h"

#include <cstddef>

namespace program {
namespace {

// Calls visit(y, first sample of that row) in a picture's order.
template <typename Visit>
void forEachRow(int width, int height, Visit visit) {
    for (int y = 0; y < height; ++y)
        visit(y, static_cast<std::size_t>(y) * static_cast<std::size_t>(width) * 4);
}

}  // namespace

host_sim::Frame frameOf(const Picture& picture, PrPixelFormat format) {
    host_sim::Frame frame(format, picture.width, picture.height);
    forEachRow(picture.width, picture.height, [&](int y, std::size_t at) {
        if (picture.depth == Depth::k8) {
            frame.writeRow(y, &picture.bytes[at]);
        } else {
            frame.writeRow(y, &picture.floats[at]);
        }
    });
    return frame;
}

void takePixels(Picture& picture, const host_sim::Frame& frame) {
    forEachRow(picture.width, picture.height, [&](int y, std::size_t at) {
        if (picture.depth == Depth::k8) {
            frame.readRow(y, &picture.bytes[at]);
        } else {
            frame.readRow(y, &picture.floats[at]);
        }
    });
}

}  // namespace program
