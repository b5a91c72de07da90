// toUtf8 and fromUtf8 against slow implementations on strings of bits, and as a round trip. The
// first byte says whether the rest is text or code points.
#include <array>
#include <cstdint>
#include <string>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "native/src/paths.h"

namespace {

using twfuzz::require;

// The low bits of a code point, most significant first, as text of zeros and ones.
std::string bitsOf(std::uint32_t value, int count) {
    std::string bits;
    for (int bit = count - 1; bit >= 0; --bit)
        bits += (value >> bit) % 2 != 0 ? '1' : '0';
    return bits;
}

std::uint32_t valueOf(const std::string& bits) {
    std::uint32_t value = 0;
    for (const char bit : bits)
        value = value * 2 + (bit == '1' ? 1 : 0);
    return value;
}

std::string encodeSlowly(const std::wstring& points) {
    std::string text;
    for (const wchar_t point : points) {
        const auto c = static_cast<std::uint32_t>(point);
        // The lead byte's mark and the bits that follow it. Beyond 21 bits the lead byte cannot
        // hold its share, which then runs into its mark.
        std::string lead = "0" + bitsOf(c, 7);
        int more = 0;
        if (c >= 0x80) lead = "110" + bitsOf(c >> 6, 5), more = 1;
        if (c >= 0x800) lead = "1110" + bitsOf(c >> 12, 4), more = 2;
        if (c >= 0x10000) lead = bitsOf((c >> 18) | 0xF0, 8), more = 3;
        text += static_cast<char>(valueOf(lead));
        for (; more > 0; --more)
            text += static_cast<char>(valueOf("10" + bitsOf(c >> 6 * (more - 1), 6)));
    }
    return text;
}

// How many bytes follow a lead byte, by the first of its bits that is 0.
std::size_t followers(const std::string& lead) {
    const std::array<const char*, 3> marks = {"1111", "111", "11"};
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (lead.starts_with(marks[i])) return 3 - i;
    }
    return 0;
}

std::wstring decodeSlowly(const std::string& text) {
    std::wstring points;
    for (std::size_t i = 0; i < text.size();) {
        const std::string lead = bitsOf(static_cast<unsigned char>(text[i]), 8);
        const std::size_t more = followers(lead);
        if (text.size() - i <= more) return points;
        std::string bits = more == 0 ? lead : lead.substr(more + 2);
        for (std::size_t k = 1; k <= more; ++k)
            bits += bitsOf(static_cast<unsigned char>(text[i + k]), 6);
        points += static_cast<wchar_t>(valueOf(bits));
        i += more + 1;
    }
    return points;
}

bool withinUnicode(const std::wstring& points) {
    for (const wchar_t point : points) {
        if (static_cast<std::uint32_t>(point) > 0x10FFFF) return false;
    }
    return true;
}

// What decoding gives has at most 21 bits, and such code points go there and back unchanged.
void checkDecoding(const std::string& text) {
    const std::wstring points = tw::fromUtf8(text);
    require(points == decodeSlowly(text), "fromUtf8 decodes by its rule");
    require(tw::fromUtf8(tw::toUtf8(points)) == points, "what was decoded comes back unchanged");
}

void checkEncoding(const std::wstring& points) {
    const std::string text = tw::toUtf8(points);
    require(text == encodeSlowly(points), "toUtf8 encodes by its rule");
    if (withinUnicode(points)) require(tw::fromUtf8(text) == points, "code points come back");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    twfuzz::Input input(data, size);
    if (input.flag()) {
        checkDecoding(input.rest());
        return 0;
    }
    std::wstring points;
    while (!input.empty())
        points += static_cast<wchar_t>(input.number<std::uint32_t>());
    checkEncoding(points);
    return 0;
}
