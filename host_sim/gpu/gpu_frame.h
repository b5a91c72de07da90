// A picture in a device's memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "host_api/host_api.h"
#include "host_sim/gpu/metal.h"
#include "host_sim/values/frame.h"

namespace host_sim {

struct GpuFrameLayout {
    int padding = 3;           // pixels behind each row, canary bytes
    std::uint8_t fill = 0xCD;  // every byte of every pixel to begin with
    int left = 0;              // where its bounds begin
    int top = 0;
};

// BGRA, top first, as 32-bit floats or, in every other format, as half floats. What a device has
// still to write is there after GpuSide::wait.
//
// Threads: like a plain value; suite callbacks may ask about it at any time.
class GpuFrame {
public:
    GpuFrame(const MetalObject& device, PrPixelFormat format, int width, int height,
             const GpuFrameLayout& layout = {});
    // A copy of a float frame in the system's memory.
    GpuFrame(const MetalObject& device, PrPixelFormat format, const Frame& picture,
             const GpuFrameLayout& layout = {});
    GpuFrame(const GpuFrame&) = delete;
    GpuFrame& operator=(const GpuFrame&) = delete;

    // What the effect knows the frame by.
    PPixHand handle() { return &record_; }

    PrPixelFormat format() const { return format_; }
    int width() const { return width_; }
    int height() const { return height_; }
    csSDK_int32 rowBytes() const;
    prRect bounds() const;
    void* memory() const { return buffer_.get(); }

    // The pixels as a float frame in the system's memory.
    Frame download() const;
    // Where the first canary byte behind a row was overwritten, in words.
    std::optional<std::string> damage() const;

private:
    int bytesPerPixel() const;
    std::size_t offset(int x, int y) const;

    PPix unused_ = {};  // effects look through the suites only
    PPix* record_ = &unused_;
    PrPixelFormat format_;
    int width_;
    int height_;
    int padding_;
    int left_;
    int top_;
    MetalObject buffer_;
};

}  // namespace host_sim
