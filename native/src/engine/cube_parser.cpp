#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "native/src/c_locale.h"
#include "native/src/engine/read_float.h"
#include "native/src/lut_engine.h"

namespace tw {
namespace {

constexpr std::string_view kSizeKeyword = "LUT_3D_SIZE";
constexpr std::string_view kMinKeyword = "DOMAIN_MIN";
constexpr std::string_view kMaxKeyword = "DOMAIN_MAX";
constexpr std::string_view kSize1DKeyword = "LUT_1D_SIZE";

constexpr std::int32_t kMinSize = 2;
constexpr std::int32_t kMaxSize = 256;

// A number as atoi gives it, without its undefined results: a value past 64 bits is the nearest one
// of them, of which the low 32 bits are kept.
std::int32_t readInteger(const char* at) {
    return static_cast<std::int32_t>(std::strtoll(at, nullptr, 10));
}

// Reads one cube file. Each step returns null, or the message of the failure that ends the parse.
class CubeReader {
public:
    CubeReader(const std::string& text, Lut3D& lut)
        : text_(text), end_(text.data() + text.size()), lut_(lut) {}

    const char* read() {
        for (const char* line = text_.data(); line < end_;) {
            const void* feed = std::memchr(line, '\n', static_cast<std::size_t>(end_ - line));
            const char* lineEnd = feed ? static_cast<const char*>(feed) : end_;
            if (const char* failure = readLine(line, lineEnd)) return failure;
            line = lineEnd + 1;
        }
        return finish();
    }

private:
    bool startsWith(const char* at, std::string_view keyword) const {
        return std::string_view(at, static_cast<std::size_t>(end_ - at)).starts_with(keyword);
    }

    // Numbers are read from the text as a whole and not from a copy of the line: one that is
    // missing at the end of a line is taken from the lines below, which are still read as lines of
    // their own afterwards. Files in the wild are accepted or refused by this rule, so it must
    // stay.
    const char* readLine(const char* line, const char* lineEnd) {
        while (line < lineEnd && (*line == ' ' || *line == '\t' || *line == '\r'))
            ++line;
        if (line == lineEnd || *line == '#') return nullptr;
        const bool keyword = *line == '_' || (*line >= 'A' && *line <= 'Z');
        return keyword ? readKeyword(line) : readTriple(line);
    }

    // Keywords that are not of this format's three-dimensional part are passed over.
    const char* readKeyword(const char* line) {
        if (startsWith(line, kSizeKeyword)) return readSize(line + kSizeKeyword.size());
        if (startsWith(line, kMinKeyword))
            return readDomain(line + kMinKeyword.size(), lut_.domainMin);
        if (startsWith(line, kMaxKeyword))
            return readDomain(line + kMaxKeyword.size(), lut_.domainMax);
        return startsWith(line, kSize1DKeyword) ? "1D LUTs are not supported" : nullptr;
    }

    const char* readSize(const char* at) {
        lut_.size = readInteger(at);
        if (lut_.size < kMinSize || lut_.size > kMaxSize) return "LUT_3D_SIZE out of range";
        values_.reserve(latticeFloats(lut_.size));
        return nullptr;
    }

    // Not validated: a number that is missing reads as 0, and the final check of the domain
    // decides.
    static const char* readDomain(const char* at, float (&bound)[3]) {
        for (float& channel : bound) {
            channel = readFloat(at, &at);
        }
        return nullptr;
    }

    const char* readTriple(const char* at) {
        for (int channel = 0; channel < 3; ++channel) {
            const char* stop;
            const float value = readFloat(at, &stop);
            if (stop == at) return "malformed data line";
            values_.push_back(value);
            at = stop;
        }
        return nullptr;
    }

    const char* finish() {
        if (lut_.size == 0) return "no LUT_3D_SIZE";
        if (values_.size() != latticeFloats(lut_.size)) return "wrong number of values";
        for (int channel = 0; channel < 3; ++channel) {
            // Negated, so that NaN fails too.
            if (!(lut_.domainMax[channel] > lut_.domainMin[channel])) return "bad DOMAIN_MIN/MAX";
        }
        lut_.data = std::move(values_);
        return nullptr;
    }

    const std::string& text_;
    const char* end_;
    Lut3D& lut_;
    std::vector<float> values_;
};

}  // namespace

bool parseCube(const std::string& text, Lut3D& lut, std::string* error) {
    lut = Lut3D{};
    const CLocaleScope cNumbers;
    const char* failure = CubeReader(text, lut).read();
    if (failure && error) *error = failure;
    return failure == nullptr;
}

}  // namespace tw
