#include "tintwell_host/files/jpeg_end.h"

#include <cstdint>

namespace program {
namespace {

constexpr unsigned kTemporary = 0x01;
constexpr unsigned kFirstRestart = 0xD0;
constexpr unsigned kStartOfImage = 0xD8;
constexpr unsigned kEndOfImage = 0xD9;
constexpr unsigned kFill = 0xFF;

unsigned byteAt(std::string_view bytes, std::size_t at) {
    return at < bytes.size() ? static_cast<std::uint8_t>(bytes[at]) : 0;
}

// Of segments. A zero is no marker: a scan has one behind each of its own bytes of FF.
bool hasLength(unsigned marker) {
    const bool isAlone = marker >= kFirstRestart && marker <= kStartOfImage;
    return marker > kTemporary && !isAlone;
}

}  // namespace

bool hasEndOfImage(std::string_view jpeg) {
    std::size_t at = jpeg.find('\xFF');
    while (at < jpeg.size()) {
        const unsigned marker = byteAt(jpeg, at + 1);
        if (marker == kEndOfImage) return true;
        std::size_t length = marker == kFill ? 1 : 2;
        if (length == 2 && hasLength(marker))
            length += byteAt(jpeg, at + 2) << 8 | byteAt(jpeg, at + 3);
        at = jpeg.find('\xFF', at + length);
    }
    return false;
}

}  // namespace program
