#include "fuzz/session/pictures.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "tests/support/random.h"

namespace session_fuzz {
namespace {

using host_sim::Frame;

constexpr int kFewPixels = 9;
// From twice this many on, rows are split over threads.
constexpr int kRowsPerThread = 16;

bool isFloat(const Frame& frame) {
    return frame.bytesPerPixel() == 16;
}

// Narrows the frame to a part of it, or to a field.
void narrow(Record& record, Frame& frame) {
    if (frame.width() == 0 || frame.height() < 2) return;
    switch (record.below(4)) {
        case 1:
            frame.selectField(PF_Field_UPPER);
            break;
        case 2:
            frame.selectField(PF_Field_LOWER);
            break;
        case 3: {
            const int x = record.below(frame.width());
            const int y = record.below(frame.height());
            frame.select({x, y, 1 + record.below(frame.width() - x),
                          1 + record.below(frame.height() - y), 1});
            break;
        }
        default:
            break;
    }
}

template <typename Image>
Image view(const PF_EffectWorld& world, tw::ChannelOrder order) {
    using Sample = decltype(Image::pixels);
    return {reinterpret_cast<Sample>(world.data), world.width, world.height, world.rowbytes, order};
}

void copyCommonArea(const PF_EffectWorld& input, const PF_EffectWorld& output, int bytesPerPixel) {
    const int columns = std::min(input.width, output.width);
    for (std::ptrdiff_t y = 0; y < std::min(input.height, output.height); ++y) {
        std::memmove(reinterpret_cast<char*>(output.data) + y * output.rowbytes,
                     reinterpret_cast<const char*>(input.data) + y * input.rowbytes,
                     static_cast<std::size_t>(columns * bytesPerPixel));
    }
}

}  // namespace

Frame makeFrame(Record& record, PrPixelFormat format) {
    const int width = record.below(kFewPixels);
    const int height = record.below(kFewPixels);
    const int channel = format == PrPixelFormat_BGRA_4444_32f   ? 4
                        : format == PrPixelFormat_BGRA_4444_16u ? 2
                                                                : 1;
    host_sim::FrameLayout layout;
    const int how = record.byte();
    layout.bottomUp = (how & 1) != 0;
    layout.misalignment = channel * (how >> 1 & 3);
    layout.padding = channel * ((how & 8) != 0 ? 300 : how >> 5);
    Frame frame(format, width, (how & 16) != 0 ? height + 2 * kRowsPerThread : height, layout);
    narrow(record, frame);
    return frame;
}

void fillWithNoise(Frame& frame, std::uint64_t seed, bool isWild) {
    twtest::Random random(seed);
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            if (frame.bytesPerPixel() == 4) {
                const auto bits = static_cast<std::uint32_t>(random.next());
                frame.setPixel8(x, y, std::bit_cast<host_sim::Rgba8>(bits));
            } else if (isFloat(frame)) {
                host_sim::RgbaF pixel;
                for (float& channel : pixel)
                    channel = isWild
                                  ? std::bit_cast<float>(static_cast<std::uint32_t>(random.next()))
                                  : random.between(-0.25f, 1.25f);
                frame.setPixelF(x, y, pixel);
            }
        }
    }
}

void paint(const Reading& reading, const std::optional<tw::Lut3D>& lut, float amount,
           const Frame& input, Frame& output) {
    const PF_EffectWorld from = input.world();
    const PF_EffectWorld to = output.world();
    const tw::ChannelOrder order = reading.order;
    const bool isPattern = lut && lut->probe != 0;
    const bool isGraded = lut && !isPattern && amount > 0.0f;
    if (isPattern && reading.isFloat) {
        tw::fillProbeF(lut->probe, view<tw::ImageF>(to, order));
    } else if (isPattern) {
        tw::fillProbe8(lut->probe, view<tw::Image8>(to, order));
    } else if (isGraded && reading.isFloat) {
        tw::applyF(*lut, view<tw::ImageF>(from, order), view<tw::ImageF>(to, order), amount);
    } else if (isGraded) {
        tw::apply8(*lut, view<tw::Image8>(from, order), view<tw::Image8>(to, order), amount);
    } else {
        copyCommonArea(from, to, reading.isFloat ? 16 : 4);
    }
}

}  // namespace session_fuzz
