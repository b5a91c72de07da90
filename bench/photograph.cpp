#include "bench/photograph.h"

#include <OpenImageIO/imageio.h>

#include <type_traits>
#include <vector>

namespace bench {
namespace {

template <typename Channel>
constexpr OIIO::TypeDesc kType =
    std::is_same_v<Channel, float> ? OIIO::TypeDesc::FLOAT : OIIO::TypeDesc::UINT8;

// Pixel `at` of a line that goes on mirrored beyond its `size` pixels.
std::size_t mirrored(int at, int size) {
    const int within = (at % (2 * size) + 2 * size) % (2 * size);
    return static_cast<std::size_t>(within < size ? within : 2 * size - 1 - within);
}

template <typename Image, typename Channel>
bool paint(const Image& image, Channel full) {
    const auto file = OIIO::ImageInput::open(TINTWELL_PHOTOGRAPH);
    if (!file || file->spec().nchannels < 3) return false;
    const int width = file->spec().width;
    const int height = file->spec().height;
    const auto columns = static_cast<std::size_t>(width);
    std::vector<Channel> colours(columns * static_cast<std::size_t>(height) * 3);
    if (!file->read_image(0, 0, 0, 3, kType<Channel>, colours.data())) return false;

    const int left = (width - image.width) / 2;
    const int top = (height - image.height) / 2;
    for (int y = 0; y < image.height; ++y) {
        const Channel* row = colours.data() + mirrored(top + y, height) * columns * 3;
        Channel* to = image.pixels + static_cast<std::size_t>(y) *
                                         (static_cast<std::size_t>(image.rowBytes) / sizeof full);
        for (int x = 0; x < image.width; ++x, to += 4) {
            const Channel* from = row + mirrored(left + x, width) * 3;
            to[0] = from[2];
            to[1] = from[1];
            to[2] = from[0];
            to[3] = full;
        }
    }
    return true;
}

}  // namespace

bool paintPhotograph(const tw::ImageF& image) {
    return paint(image, 1.0f);
}

bool paintPhotograph(const tw::Image8& image) {
    return paint(image, std::uint8_t{255});
}

}  // namespace bench
