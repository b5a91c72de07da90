#include <algorithm>
#include <cstring>

#include "native/src/lut_text.h"
#include "native/src/text/lut_text_format.h"

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

// The low bytes of the units; empty when a unit holds more than a byte.
std::string narrow(const unsigned char* bytes, unsigned long count) {
    std::string text(count / 2, '\0');
    unsigned highBits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char>(bytes[2 * i]);
        highBits |= bytes[2 * i + 1];
    }
    if (highBits != 0) text.clear();
    return text;
}

}  // namespace

std::string embeddedText(const void* bytes, unsigned long count) {
    if (!bytes || count < kMinBytes) return {};
    const auto* first = static_cast<const unsigned char*>(bytes);
    if (std::memcmp(first, kTextMark.data(), kTextMark.size()) == 0) {
        return std::string(static_cast<const char*>(bytes), count);
    }
    return startsWithUnits(first, count) ? narrow(first, count) : std::string();
}

std::vector<std::uint16_t> toUtf16(const std::string& text) {
    std::vector<std::uint16_t> units(text.size());
    std::transform(text.begin(), text.end(), units.begin(),
                   [](char character) { return static_cast<unsigned char>(character); });
    return units;
}

}  // namespace tw
