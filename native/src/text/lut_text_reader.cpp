#include <array>
#include <cmath>
#include <cstdio>

#include "native/src/c_locale.h"
#include "native/src/lut_text.h"
#include "native/src/text/lut_text_format.h"

namespace tw {
namespace {

constexpr int kMinPattern = 2;
constexpr int kMaxPattern = 64;
constexpr int kMinSize = 2;
constexpr int kMaxSize = 129;

// Headers are scanned from a short copy, as scanning a text of megabytes would measure its whole
// length first. A name can be longer than that; only then a second, longer copy is made.
constexpr std::size_t kShortHead = 96;
constexpr std::size_t kLongHead = 1200;

struct Header {
    long id = 0;
    char name[400] = {};
    int size = 0;
    float lo = 0;
    float hi = 0;
    int consumed = 0;  // characters up to the first one of the data
};

// The scan formats are the format: how much white space they take, which signs and exponents, how
// long a name may be. They must not be replaced by something stricter or more lenient.
bool scanNamed(const std::string& head, Header& header) {
    const int fields =
        std::sscanf(head.c_str(), "TWLUT3 %ld %399s %d %f %f %n", &header.id, header.name,
                    &header.size, &header.lo, &header.hi, &header.consumed);
    return fields == 5 && header.consumed >= 1;
}

bool scanNumbered(const std::string& head, Header& header) {
    const int fields = std::sscanf(head.c_str(), "TWLUT2 %ld %d %f %f %n", &header.id, &header.size,
                                   &header.lo, &header.hi, &header.consumed);
    return fields == 4 && header.consumed > 0;
}

bool scanPlain(const std::string& head, Header& header) {
    const int fields = std::sscanf(head.c_str(), "TWLUT1 %d %f %f %n", &header.size, &header.lo,
                                   &header.hi, &header.consumed);
    return fields == 3 && header.consumed > 0;
}

// The byte that a "%" and these two characters stand for. The scan decides here as well: a second
// character that is no hexadecimal digit is swallowed with the first.
bool scanEscape(const std::string& digits, char& byte) {
    unsigned value = 0;
    if (std::sscanf(digits.c_str(), "%2x", &value) != 1) return false;
    byte = static_cast<char>(value & 0xFF);
    return true;
}

std::string decodeName(const std::string& encoded) {
    if (encoded == "-") return {};
    std::string name;
    for (std::size_t at = 0; at < encoded.size();) {
        char byte = 0;
        if (encoded[at] == '%' && at + 2 < encoded.size() &&
            scanEscape(encoded.substr(at + 1, 2), byte)) {
            name.push_back(byte);
            at += 3;
        } else {
            name.push_back(encoded[at]);
            at += 1;
        }
    }
    return name;
}

// Six bits per character of the alphabet, -1 for all others.
constexpr std::array<std::int8_t, 256> makeSextets() {
    std::array<std::int8_t, 256> sextets{};
    sextets.fill(-1);
    for (std::size_t i = 0; i < kBase64Alphabet.size(); ++i) {
        sextets[static_cast<unsigned char>(kBase64Alphabet[i])] = static_cast<std::int8_t>(i);
    }
    return sextets;
}

constexpr std::array<std::int8_t, 256> kSextets = makeSextets();

// Fills `values` from base64 text, skipping what is not of the alphabet, up to "=" or the end.
// True when all of them were there. The product and the sum are rounded once, on every processor:
// a project must hold the same LUT wherever it is opened.
bool decodeSamples(const char* at, const char* end, float lo, float step,
                   std::vector<float>& values) {
    std::size_t stored = 0;
    unsigned bits = 0;
    int bitCount = 0;
    for (; at != end && stored < values.size() && *at != '='; ++at) {
        const int sextet = kSextets[static_cast<unsigned char>(*at)];
        if (sextet < 0) continue;
        bits = bits << 6 | static_cast<unsigned>(sextet);
        bitCount += 6;
        if (bitCount < 16) continue;
        bitCount -= 16;
        const unsigned pair = bits >> bitCount & 0xFFFF;
        const unsigned code = pair >> 8 | (pair & 0xFF) << 8;
        values[stored++] = std::fmaf(static_cast<float>(code), step, lo);
    }
    return stored == values.size();
}

// The steps of parseEmbeddedText; null or the message of the failure.
class TextReader {
public:
    TextReader(const std::string& text, Lut3D& lut) : text_(text), lut_(lut) {}

    const char* read() {
        if (isForm('0')) return nullptr;
        if (isForm('P')) return readPattern();
        if (const char* failure = readHeader()) return failure;
        return readSamples();
    }

    std::optional<EmbeddedData> findData() {
        if (isForm('0') || isForm('P') || readHeader()) return std::nullopt;
        const std::size_t bytes = latticeFloats(header_.size) * 2;
        return EmbeddedData{static_cast<std::size_t>(header_.consumed), bytes / 3 * 4};
    }

private:
    bool isForm(char form) const {
        return text_.compare(0, kTextMark.size(), kTextMark) == 0 && text_.size() >= kFormLength &&
               text_[kFormLength - 1] == form;
    }

    const char* readPattern() {
        int n = 0;
        const std::string head = text_.substr(0, kShortHead);
        if (std::sscanf(head.c_str(), "TWLUTP %d", &n) != 1 || n < kMinPattern || n > kMaxPattern) {
            return "bad calibration pattern size";
        }
        lut_.probe = n;
        return nullptr;
    }

    const char* readHeader() {
        const std::string head = text_.substr(0, kShortHead);
        if (isForm('3')) {
            if (!scanNamed(head, header_) && !scanNamed(text_.substr(0, kLongHead), header_)) {
                return "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)";
            }
            lut_.name = decodeName(header_.name);
        } else if (!(isForm('2') ? scanNumbered(head, header_) : scanPlain(head, header_))) {
            return "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)";
        }
        lut_.id = header_.id;
        if (header_.size < kMinSize || header_.size > kMaxSize) return "LUT size out of range";
        return nullptr;
    }

    const char* readSamples() {
        lut_.size = header_.size;
        lut_.data.resize(latticeFloats(lut_.size));
        const float step = (header_.hi - header_.lo) / static_cast<float>(kMaxCode);
        const char* data = text_.data() + header_.consumed;
        const bool complete =
            decodeSamples(data, text_.data() + text_.size(), header_.lo, step, lut_.data);
        return complete ? nullptr : "LUT data is truncated";
    }

    const std::string& text_;
    Lut3D& lut_;
    Header header_;
};

}  // namespace

bool parseEmbeddedText(const std::string& text, Lut3D& lut, std::string* err) {
    lut = Lut3D{};
    const CLocaleScope cNumbers;
    const char* failure = TextReader(text, lut).read();
    if (failure && err) *err = failure;
    return failure == nullptr;
}

std::optional<EmbeddedData> embeddedData(const std::string& text) {
    Lut3D ignored;
    const CLocaleScope cNumbers;
    return TextReader(text, ignored).findData();
}

}  // namespace tw
