#include "native/src/text/lut_text_reader.h"

#include <cstdio>

#include "native/src/c_locale.h"
#include "native/src/lut_text.h"
#include "native/src/text/lut_text_format.h"
#include "native/src/text/sample_codes.h"
#include "native/src/text/text_view.h"

namespace tw {
namespace {

constexpr int kMinPattern = 2;
constexpr int kMinSize = 2;

// Scanned from a copy of the head, as sscanf measures the length of its whole input first.
struct Header {
    long long id = 0;
    char name[kLongestTextName + 1] = {};
    int size = 0;
    float lo = 0;
    float hi = 0;
    int consumed = 0;  // characters up to the first one of the data
};

// The scan formats are the format: how much white space they take, which signs and exponents, how
// long a name may be. They must not be replaced by something stricter or more lenient.
bool scanNamed(const std::string& head, Header& header) {
    const int fields =
        std::sscanf(head.c_str(), "TWLUT3 %lld %399s %d %f %f %n", &header.id, header.name,
                    &header.size, &header.lo, &header.hi, &header.consumed);
    return fields == 5 && header.consumed >= 1;
}

bool scanNumbered(const std::string& head, Header& header) {
    const int fields = std::sscanf(head.c_str(), "TWLUT2 %lld %d %f %f %n", &header.id,
                                   &header.size, &header.lo, &header.hi, &header.consumed);
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

// The steps of reading; null or the message of the failure.
class TextReader {
public:
    TextReader(const TextView& text, Lut3D& lut)
        : text_(text), head_(text.head(kShortHead)), lut_(lut) {}

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
        return head_.starts_with(kTextMark) && head_.size() >= kFormLength &&
               head_[kFormLength - 1] == form;
    }

    const char* readPattern() {
        int n = 0;
        if (std::sscanf(head_.c_str(), "TWLUTP %d", &n) != 1 || n < kMinPattern ||
            n > kMostPatternSteps) {
            return "bad calibration pattern size";
        }
        lut_.probe = n;
        return nullptr;
    }

    const char* readHeader() {
        if (isForm('3')) {
            if (!scanNamed(head_, header_) && !scanNamed(text_.head(kLongHead), header_)) {
                return "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)";
            }
            lut_.name = decodeName(header_.name);
        } else if (!(isForm('2') ? scanNumbered(head_, header_) : scanPlain(head_, header_))) {
            return "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)";
        }
        lut_.id = header_.id;
        if (header_.size < kMinSize || header_.size > kMostTextPoints)
            return "LUT size out of range";
        return nullptr;
    }

    const char* readSamples() {
        lut_.size = header_.size;
        lut_.data.resize(latticeFloats(lut_.size));
        const float step = (header_.hi - header_.lo) / static_cast<float>(kMaxCode);
        const TextView data = text_.from(static_cast<std::size_t>(header_.consumed));
        const bool complete = decodeSamples(data, header_.lo, step, lut_.data);
        return complete ? nullptr : "LUT data is truncated";
    }

    TextView text_;
    std::string head_;
    Lut3D& lut_;
    Header header_;
};

bool read(const TextView& text, Lut3D& lut, std::string* err) {
    lut = Lut3D{};
    const CLocaleScope cNumbers;
    const char* failure = TextReader(text, lut).read();
    if (failure && err) *err = failure;
    return failure == nullptr;
}

}  // namespace

bool parseEmbeddedText(const std::string& text, Lut3D& lut, std::string* err) {
    return read(TextView::of(text), lut, err);
}

bool readParameter(const void* bytes, unsigned long count, Lut3D& lut, std::string* err) {
    const TextView text = textIn(bytes, count);
    if (text.length > 0) return read(text, lut, err);
    if (err) *err = "parameter does not hold TWLUT text";
    return false;
}

std::optional<EmbeddedData> embeddedData(const std::string& text) {
    Lut3D ignored;
    const CLocaleScope cNumbers;
    return TextReader(TextView::of(text), ignored).findData();
}

}  // namespace tw
