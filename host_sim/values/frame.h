// A picture of the simulated host.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host_api/pixel_formats.h"
#include "host_api/world.h"

namespace host_sim {

// Memory round the pixels of a frame. Padding is canary bytes, as is a margin before the first and
// after the last row.
struct FrameLayout {
    int padding = 32;          // bytes after each row; 0 leaves no canary between rows
    bool bottomUp = false;     // negative row bytes
    int misalignment = 0;      // bytes by which the first pixel misses 16-byte alignment
    std::uint8_t fill = 0xCD;  // every byte of every pixel to begin with
};

// Part of a frame, in pixels and rows of the whole frame.
struct Region {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;   // rows of the region itself
    int rowStep = 1;  // 2: every second row, as for one field
};

using Rgba8 = std::array<std::uint8_t, 4>;
using RgbaF = std::array<float, 4>;

// Owns its memory. Formats: BGRA or ARGB with 8 bits, BGRA with 16 bits or 32-bit floats a channel.
//
// Threads: like a plain value; several renders may read one frame at once.
class Frame {
public:
    // Throws SimError for another format, a size below 0, or a misalignment that a channel of the
    // format cannot have.
    Frame(PrPixelFormat format, int width, int height, const FrameLayout& layout = {});

    PrPixelFormat format() const { return format_; }
    int bytesPerPixel() const;

    // Narrows what the world and the accessors below show; the rest of the frame is then outside
    // and a render that writes there is caught. Throws SimError for what does not fit.
    void select(const Region& region);
    // One field: every second row from row 0 (upper) or 1 (lower).
    void selectField(PF_Field field);
    void selectAll();

    // All of these are of the selected region; (0, 0) is the top left.
    int width() const { return region_.width; }
    int height() const { return region_.height; }
    std::ptrdiff_t rowBytes() const;
    // A record whose pixels are this frame's own; valid while the frame lives. Effects that get the
    // world of a const frame must not write it: Instance::render checks that.
    PF_EffectWorld world() const;

    // Red, green, blue, alpha, whatever the order in memory. Throw SimError for a pixel outside or
    // a format of another depth.
    Rgba8 pixel8(int x, int y) const;
    RgbaF pixelF(int x, int y) const;
    void setPixel8(int x, int y, const Rgba8& rgba);
    void setPixelF(int x, int y, const RgbaF& rgba);
    // A row at a time: width() pixels of red, green, blue, alpha. Throw as above.
    void readRow(int y, std::uint8_t* rgba) const;
    void readRow(int y, float* rgba) const;
    void writeRow(int y, const std::uint8_t* rgba);
    void writeRow(int y, const float* rgba);
    // The pixels' bytes, row by row, top first, without padding.
    std::vector<std::uint8_t> pixelBytes() const;
    void fill(std::uint8_t byte);

    // Where the first canary byte was overwritten, in words; nothing when all are whole.
    std::optional<std::string> damage() const;
    // The same for any byte outside the selected region, pixels included, that differs from
    // `before`, an earlier copy of this frame.
    std::optional<std::string> changeOutside(const Frame& before) const;
    // Whether all memory is as in `other`, a copy of this frame.
    bool sameMemory(const Frame& other) const { return bytes_ == other.bytes_; }

private:
    int channelBytes() const;
    std::size_t rowStart(int fullY) const;   // of a row of the whole frame
    std::size_t offset(int x, int y) const;  // of a pixel of the region
    std::size_t checkedOffset(int x, int y, int channelSize) const;
    bool rowIsIn(int fullY, const Region& region) const;
    // The first byte outside `region` for which `isWrong` holds, in words.
    std::optional<std::string> firstOutside(const Region& region,
                                            const std::function<bool(std::size_t)>& isWrong) const;

    PrPixelFormat format_;
    int fullWidth_;
    int fullHeight_;
    bool bottomUp_ = false;
    std::size_t rowLength_ = 0;  // bytes from a row in memory to the next, padding included
    std::size_t firstRow_ = 0;   // offset of the first row in memory
    Region region_;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace host_sim
