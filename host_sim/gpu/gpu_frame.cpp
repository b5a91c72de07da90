#include "host_sim/gpu/gpu_frame.h"

#include <array>
#include <cstring>
#include <vector>

#include "host_sim/gpu/half.h"

namespace host_sim {
namespace {

constexpr std::uint8_t kRowCanary = 0xE7;
constexpr std::array<std::size_t, 4> kBgra = {2, 1, 0, 3};

}  // namespace

GpuFrame::GpuFrame(const MetalObject& device, PrPixelFormat format, int width, int height,
                   const GpuFrameLayout& layout)
    : format_(format),
      width_(width),
      height_(height),
      padding_(layout.padding),
      left_(layout.left),
      top_(layout.top) {
    std::vector<std::uint8_t> bytes(offset(0, height), kRowCanary);
    for (int y = 0; y < height; ++y)
        std::fill_n(bytes.begin() + static_cast<std::ptrdiff_t>(offset(0, y)),
                    width * bytesPerPixel(), layout.fill);
    buffer_ = newMetalBuffer(device, bytes);
}

GpuFrame::GpuFrame(const MetalObject& device, PrPixelFormat format, const Frame& picture,
                   const GpuFrameLayout& layout)
    : format_(format),
      width_(picture.width()),
      height_(picture.height()),
      padding_(layout.padding),
      left_(layout.left),
      top_(layout.top) {
    std::vector<std::uint8_t> bytes(offset(0, height_), kRowCanary);
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            const RgbaF rgba = picture.pixelF(x, y);
            for (std::size_t c = 0; c < 4; ++c) {
                const float value = rgba[kBgra[c]];
                const std::uint16_t half = toHalf(value);
                if (bytesPerPixel() == 16) {
                    std::memcpy(&bytes[offset(x, y) + c * 4], &value, 4);
                } else {
                    std::memcpy(&bytes[offset(x, y) + c * 2], &half, 2);
                }
            }
        }
    }
    buffer_ = newMetalBuffer(device, bytes);
}

int GpuFrame::bytesPerPixel() const {
    return format_ == PrPixelFormat_GPU_BGRA_4444_32f ? 16 : 8;
}

csSDK_int32 GpuFrame::rowBytes() const {
    return (width_ + padding_) * bytesPerPixel();
}

prRect GpuFrame::bounds() const {
    return {static_cast<csSDK_int16>(top_), static_cast<csSDK_int16>(left_),
            static_cast<csSDK_int16>(top_ + height_), static_cast<csSDK_int16>(left_ + width_)};
}

std::size_t GpuFrame::offset(int x, int y) const {
    return static_cast<std::size_t>(y) * static_cast<std::size_t>(rowBytes()) +
           static_cast<std::size_t>(x * bytesPerPixel());
}

Frame GpuFrame::download() const {
    const std::vector<std::uint8_t> bytes = metalContents(buffer_);
    Frame picture(PrPixelFormat_BGRA_4444_32f, width_, height_);
    for (int y = 0; y < height_; ++y) {
        for (int x = 0; x < width_; ++x) {
            RgbaF rgba = {};
            for (std::size_t c = 0; c < 4; ++c) {
                std::uint16_t half = 0;
                if (bytesPerPixel() == 16) {
                    std::memcpy(&rgba[kBgra[c]], &bytes[offset(x, y) + c * 4], 4);
                } else {
                    std::memcpy(&half, &bytes[offset(x, y) + c * 2], 2);
                    rgba[kBgra[c]] = fromHalf(half);
                }
            }
            picture.setPixelF(x, y, rgba);
        }
    }
    return picture;
}

std::optional<std::string> GpuFrame::damage() const {
    const std::vector<std::uint8_t> bytes = metalContents(buffer_);
    for (int y = 0; y < height_; ++y) {
        for (std::size_t at = offset(width_, y); at < offset(0, y + 1); ++at) {
            if (bytes[at] != kRowCanary)
                return "byte " + std::to_string(at - offset(width_, y)) + " behind row " +
                       std::to_string(y);
        }
    }
    return std::nullopt;
}

}  // namespace host_sim
