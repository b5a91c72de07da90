#include "bench/photograph.h"

#include <OpenImageIO/imageio.h>

#include <type_traits>
#include <vector>

namespace bench {
namespace {

template <typename Channel>
constexpr OIIO::TypeDesc kType =
    std::is_same_v<Channel, float> ? OIIO::TypeDesc::FLOAT : OIIO::TypeDesc::UINT8;

template <typename Image, typename Channel>
bool paint(const Image& image, Channel full) {
    const auto file = OIIO::ImageInput::open(TINTWELL_PHOTOGRAPH);
    if (!file) return false;
    const OIIO::ImageSpec& spec = file->spec();
    if (spec.width < image.width || spec.height < image.height || spec.nchannels < 3) return false;
    const auto width = static_cast<std::size_t>(spec.width);
    const auto height = static_cast<std::size_t>(spec.height);
    std::vector<Channel> colours(width * height * 3);
    if (!file->read_image(0, 0, 0, 3, kType<Channel>, colours.data())) return false;

    const int left = (spec.width - image.width) / 2;
    const int top = (spec.height - image.height) / 2;
    for (int y = 0; y < image.height; ++y) {
        const Channel* from =
            colours.data() +
            (static_cast<std::size_t>(top + y) * width + static_cast<std::size_t>(left)) * 3;
        Channel* to = image.pixels + static_cast<std::size_t>(y) *
                                         (static_cast<std::size_t>(image.rowBytes) / sizeof full);
        for (int x = 0; x < image.width; ++x, from += 3, to += 4) {
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
