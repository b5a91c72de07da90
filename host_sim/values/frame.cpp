#include "host_sim/values/frame.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "host_sim/values/error.h"

namespace host_sim {
namespace {

constexpr std::size_t kMargin = 64;

// Differs from byte to byte, so that rows copied too far show.
std::uint8_t canaryAt(std::size_t offset) {
    return static_cast<std::uint8_t>(offset * 167 + 13);
}

int channelBytesOf(PrPixelFormat format) {
    switch (format) {
        case PrPixelFormat_ARGB_4444_8u:
        case PrPixelFormat_BGRA_4444_8u:
            return 1;
        case PrPixelFormat_BGRA_4444_16u:
            return 2;
        case PrPixelFormat_BGRA_4444_32f:
            return 4;
        default:
            throw SimError("The simulated host has no frames of this pixel format.");
    }
}

// Places of red, green, blue and alpha in a pixel.
std::array<std::size_t, 4> channelOrder(PrPixelFormat format) {
    if (format == PrPixelFormat_ARGB_4444_8u) return {1, 2, 3, 0};
    return {2, 1, 0, 3};
}

// `out` takes at place k of each pixel what `in` has at place order[k].
template <typename Channel>
void reorder(const std::uint8_t* in, std::uint8_t* out, int pixels,
             const std::array<std::size_t, 4>& order) {
    for (int x = 0; x < pixels; ++x, in += 4 * sizeof(Channel), out += 4 * sizeof(Channel)) {
        std::array<Channel, 4> from;
        std::array<Channel, 4> to;
        std::memcpy(from.data(), in, sizeof from);
        for (std::size_t k = 0; k < 4; ++k)
            to[k] = from[order[k]];
        std::memcpy(out, to.data(), sizeof to);
    }
}

// Where in red, green, blue, alpha the channels of a pixel in memory come from.
std::array<std::size_t, 4> inverse(const std::array<std::size_t, 4>& order) {
    std::array<std::size_t, 4> places;
    for (std::size_t k = 0; k < 4; ++k)
        places[order[k]] = k;
    return places;
}

}  // namespace

Frame::Frame(PrPixelFormat format, int width, int height, const FrameLayout& layout)
    : format_(format), fullWidth_(width), fullHeight_(height) {
    const int channel = channelBytesOf(format);
    if (width < 0 || height < 0 || layout.padding < 0 || layout.misalignment < 0 ||
        layout.padding % channel != 0 || layout.misalignment % channel != 0) {
        throw SimError("A frame cannot have this size or layout.");
    }
    rowLength_ = static_cast<std::size_t>(width * bytesPerPixel() + layout.padding);
    firstRow_ = kMargin + static_cast<std::size_t>(layout.misalignment);
    bottomUp_ = layout.bottomUp;
    bytes_.resize(firstRow_ + rowLength_ * static_cast<std::size_t>(height) + kMargin);
    for (std::size_t i = 0; i < bytes_.size(); ++i)
        bytes_[i] = canaryAt(i);
    selectAll();
    fill(layout.fill);
}

int Frame::channelBytes() const {
    return channelBytesOf(format_);
}

int Frame::bytesPerPixel() const {
    return 4 * channelBytes();
}

void Frame::select(const Region& region) {
    const int lastRow = region.y + (region.height - 1) * region.rowStep;
    if (region.x < 0 || region.y < 0 || region.width < 0 || region.height < 0 ||
        region.rowStep < 1 || region.x + region.width > fullWidth_ || lastRow >= fullHeight_) {
        throw SimError("The region does not fit into the frame.");
    }
    region_ = region;
}

void Frame::selectField(PF_Field field) {
    const int first = field == PF_Field_LOWER ? 1 : 0;
    select({0, first, fullWidth_, (fullHeight_ + 1 - first) / 2, 2});
}

void Frame::selectAll() {
    region_ = {0, 0, fullWidth_, fullHeight_, 1};
}

std::ptrdiff_t Frame::rowBytes() const {
    const auto step = static_cast<std::ptrdiff_t>(rowLength_) * region_.rowStep;
    return bottomUp_ ? -step : step;
}

PF_EffectWorld Frame::world() const {
    PF_EffectWorld world = {};
    if (channelBytes() == 2) world.world_flags |= PF_WorldFlag_DEEP;
    // The interface has one record for both directions.
    auto* bytes = const_cast<std::uint8_t*>(bytes_.data());
    world.data = reinterpret_cast<PF_Pixel*>(bytes + (height() > 0 ? offset(0, 0) : firstRow_));
    world.rowbytes = static_cast<A_long>(rowBytes());
    world.width = width();
    world.height = height();
    world.pix_aspect_ratio = {1, 1};
    return world;
}

Rgba8 Frame::pixel8(int x, int y) const {
    const std::uint8_t* pixel = bytes_.data() + checkedOffset(x, y, 1);
    const auto order = channelOrder(format_);
    return {pixel[order[0]], pixel[order[1]], pixel[order[2]], pixel[order[3]]};
}

RgbaF Frame::pixelF(int x, int y) const {
    std::array<float, 4> pixel;
    std::memcpy(pixel.data(), bytes_.data() + checkedOffset(x, y, 4), sizeof pixel);
    const auto order = channelOrder(format_);
    return {pixel[order[0]], pixel[order[1]], pixel[order[2]], pixel[order[3]]};
}

void Frame::setPixel8(int x, int y, const Rgba8& rgba) {
    std::uint8_t* pixel = bytes_.data() + checkedOffset(x, y, 1);
    const auto order = channelOrder(format_);
    for (std::size_t channel = 0; channel < 4; ++channel)
        pixel[order[channel]] = rgba[channel];
}

void Frame::setPixelF(int x, int y, const RgbaF& rgba) {
    std::array<float, 4> pixel;
    const auto order = channelOrder(format_);
    for (std::size_t channel = 0; channel < 4; ++channel)
        pixel[order[channel]] = rgba[channel];
    std::memcpy(bytes_.data() + checkedOffset(x, y, 4), pixel.data(), sizeof pixel);
}

void Frame::readRow(int y, std::uint8_t* rgba) const {
    if (width() == 0) return;
    reorder<std::uint8_t>(&bytes_[checkedOffset(0, y, 1)], rgba, width(), channelOrder(format_));
}

void Frame::readRow(int y, float* rgba) const {
    if (width() == 0) return;
    reorder<float>(&bytes_[checkedOffset(0, y, 4)], reinterpret_cast<std::uint8_t*>(rgba), width(),
                   channelOrder(format_));
}

void Frame::writeRow(int y, const std::uint8_t* rgba) {
    if (width() == 0) return;
    reorder<std::uint8_t>(rgba, &bytes_[checkedOffset(0, y, 1)], width(),
                          inverse(channelOrder(format_)));
}

void Frame::writeRow(int y, const float* rgba) {
    if (width() == 0) return;
    reorder<float>(reinterpret_cast<const std::uint8_t*>(rgba), &bytes_[checkedOffset(0, y, 4)],
                   width(), inverse(channelOrder(format_)));
}

std::vector<std::uint8_t> Frame::pixelBytes() const {
    std::vector<std::uint8_t> pixels;
    const auto length = static_cast<std::ptrdiff_t>(width() * bytesPerPixel());
    for (int y = 0; y < height(); ++y) {
        const auto row = bytes_.begin() + static_cast<std::ptrdiff_t>(offset(0, y));
        pixels.insert(pixels.end(), row, row + length);
    }
    return pixels;
}

void Frame::fill(std::uint8_t byte) {
    for (int y = 0; y < height(); ++y) {
        std::fill_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset(0, y)),
                    width() * bytesPerPixel(), byte);
    }
}

std::optional<std::string> Frame::damage() const {
    const Region all{0, 0, fullWidth_, fullHeight_, 1};
    return firstOutside(all, [this](std::size_t i) { return bytes_[i] != canaryAt(i); });
}

std::optional<std::string> Frame::changeOutside(const Frame& before) const {
    return firstOutside(region_, [&](std::size_t i) { return bytes_[i] != before.bytes_[i]; });
}

std::size_t Frame::rowStart(int fullY) const {
    return firstRow_ +
           rowLength_ * static_cast<std::size_t>(bottomUp_ ? fullHeight_ - 1 - fullY : fullY);
}

std::size_t Frame::offset(int x, int y) const {
    return rowStart(region_.y + y * region_.rowStep) +
           static_cast<std::size_t>((region_.x + x) * bytesPerPixel());
}

std::size_t Frame::checkedOffset(int x, int y, int channelSize) const {
    if (x < 0 || y < 0 || x >= width() || y >= height()) {
        throw SimError("The pixel " + std::to_string(x) + ", " + std::to_string(y) +
                       " is outside the frame.");
    }
    if (channelSize != channelBytes()) throw SimError("The frame has pixels of another depth.");
    return offset(x, y);
}

bool Frame::rowIsIn(int fullY, const Region& region) const {
    const int below = fullY - region.y;
    return below >= 0 && below % region.rowStep == 0 && below / region.rowStep < region.height;
}

std::optional<std::string> Frame::firstOutside(
    const Region& region, const std::function<bool(std::size_t)>& isWrong) const {
    const auto search = [&](std::size_t begin, std::size_t end, const std::string& place) {
        std::optional<std::string> found;
        for (std::size_t i = begin; i < end && !found; ++i) {
            if (isWrong(i)) found = "byte " + std::to_string(i - begin) + " " + place;
        }
        return found;
    };
    const std::size_t lastRow = firstRow_ + rowLength_ * static_cast<std::size_t>(fullHeight_);
    if (auto found = search(0, firstRow_, "of the margin before the picture")) return found;
    if (auto found = search(lastRow, bytes_.size(), "of the margin after the picture"))
        return found;
    const auto left = static_cast<std::size_t>(region.x * bytesPerPixel());
    const auto right = static_cast<std::size_t>((region.x + region.width) * bytesPerPixel());
    for (int y = 0; y < fullHeight_; ++y) {
        const std::size_t row = rowStart(y);
        const std::string name = "row " + std::to_string(y);
        const std::size_t leftEnd = rowIsIn(y, region) ? row + left : row + rowLength_;
        if (auto found = search(row, leftEnd, "of " + name)) return found;
        if (!rowIsIn(y, region)) continue;
        if (auto found = search(row + right, row + rowLength_, "after the end of " + name)) {
            return found;
        }
    }
    return std::nullopt;
}

}  // namespace host_sim
