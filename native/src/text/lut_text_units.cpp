#include <algorithm>
#include <cstring>

#include "native/src/lut_text.h"
#include "native/src/text/lut_text_format.h"
#include "native/src/text/text_view.h"

namespace tw {
namespace {

constexpr unsigned long kMinBytes = 6;

bool startsWithUnits(const unsigned char* bytes, unsigned long count) {
    if (count < 2 * kTextMark.size()) return false;
    for (std::size_t i = 0; i < kTextMark.size(); ++i) {
        if (bytes[2 * i] != static_cast<unsigned char>(kTextMark[i]) || bytes[2 * i + 1] != 0) {
            return false;
        }
    }
    return true;
}

bool hasWideUnits(const unsigned char* bytes, unsigned long count) {
    unsigned bits = 0;
    for (std::size_t at = 0; at + 2 <= count; at += 2) {
        std::uint16_t unit;
        std::memcpy(&unit, bytes + at, sizeof unit);
        bits |= unit;
    }
    return bits > 0xFF;
}

}  // namespace

TextView textIn(const void* bytes, unsigned long count) {
    if (!bytes || count < kMinBytes) return {};
    const auto* first = static_cast<const unsigned char*>(bytes);
    if (std::memcmp(first, kTextMark.data(), kTextMark.size()) == 0) return {first, count, 1};
    if (!startsWithUnits(first, count) || hasWideUnits(first, count)) return {};
    return {first, count / 2, 2};
}

std::string embeddedText(const void* bytes, unsigned long count) {
    const TextView text = textIn(bytes, count);
    return text.head(text.length);
}

std::vector<std::uint16_t> toUtf16(const std::string& text) {
    std::vector<std::uint16_t> units(text.size());
    std::transform(text.begin(), text.end(), units.begin(),
                   [](char character) { return static_cast<unsigned char>(character); });
    return units;
}

}  // namespace tw
