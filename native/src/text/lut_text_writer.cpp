#include <cctype>
#include <cmath>
#include <cstdio>

#include "native/src/base64.h"
#include "native/src/c_locale.h"
#include "native/src/lut_text.h"
#include "native/src/text/lut_text_format.h"

namespace tw {
namespace {

// The values that code 0 and the highest code stand for; hi > lo unless all samples are
// equal and so large that adding 1 changes nothing (1e20), or some are not finite.
struct CodeRange {
    float lo;
    float hi;
};

CodeRange rangeOf(const std::vector<float>& samples) {
    if (samples.empty()) return {0.0f, 1.0f};
    CodeRange range{samples.front(), samples.front()};
    for (const float sample : samples) {
        if (sample < range.lo) range.lo = sample;
        if (range.hi < sample) range.hi = sample;
    }
    if (!(range.hi > range.lo)) range.hi = range.lo + 1.0f;
    return range;
}

// Halves are rounded away from zero; NaN becomes 0.
int quantise(double scaled) {
    const double rounded = std::round(scaled);
    if (!(rounded > 0.0)) return 0;
    return rounded >= kMaxCode ? kMaxCode : static_cast<int>(rounded);
}

// The codes of all samples, low byte first.
std::string encodeSamples(const std::vector<float>& samples, CodeRange range) {
    const double lo = range.lo;
    const double scale = kMaxCode / (static_cast<double>(range.hi) - lo);
    std::string bytes;
    bytes.reserve(samples.size() * 2);
    for (const float sample : samples) {
        const int code = quantise(scale * (static_cast<double>(sample) - lo));
        bytes.push_back(static_cast<char>(code & 0xFF));
        bytes.push_back(static_cast<char>(code >> 8));
    }
    return bytes;
}

unsigned byteAt(const std::string& bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

void appendBase64(const std::string& bytes, std::string& text) {
    text.reserve(text.size() + (bytes.size() + 2) / 3 * 4);
    const auto put = [&text](unsigned bits) { text.push_back(kBase64Alphabet[bits & 63]); };
    std::size_t at = 0;
    for (; at + 3 <= bytes.size(); at += 3) {
        const unsigned group =
            byteAt(bytes, at) << 16 | byteAt(bytes, at + 1) << 8 | byteAt(bytes, at + 2);
        put(group >> 18);
        put(group >> 12);
        put(group >> 6);
        put(group);
    }
    const std::size_t left = bytes.size() - at;
    if (left == 0) return;
    const unsigned group = byteAt(bytes, at) << 16 | (left == 2 ? byteAt(bytes, at + 1) << 8 : 0);
    put(group >> 18);
    put(group >> 12);
    if (left == 2) put(group >> 6);
    text.append(left == 2 ? "=" : "==");
}

std::string formatNumbers(std::int32_t size, CodeRange range) {
    const CLocaleScope cNumbers;
    char text[96];
    std::snprintf(text, sizeof text, " %d %.9g %.9g ", size, static_cast<double>(range.lo),
                  static_cast<double>(range.hi));
    return text;
}

// Letters and digits are those of the process's locale: in the usual C locale only ASCII ones.
std::string encodeName(const std::string& name) {
    if (name.empty()) return "-";
    std::string encoded;
    for (const char character : name) {
        const auto byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) || std::string_view("-._~").find(character) != std::string::npos) {
            encoded.push_back(character);
        } else {
            constexpr const char* kHex = "0123456789ABCDEF";
            encoded.push_back('%');
            encoded.push_back(kHex[byte >> 4]);
            encoded.push_back(kHex[byte & 15]);
        }
    }
    return encoded;
}

}  // namespace

std::string toEmbeddedText(const Lut3D& lut, MatchId id, const std::string& name) {
    const CodeRange range = rangeOf(lut.data);
    std::string text =
        "TWLUT3 " + std::to_string(id) + " " + encodeName(name) + formatNumbers(lut.size, range);
    appendBase64(encodeSamples(lut.data, range), text);
    return text;
}

}  // namespace tw
