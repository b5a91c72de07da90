// The TWLUT text. The input is a parameter's bytes: the text in them is extracted and read as slow
// second readers do it, from 8-bit and from 16-bit storage; and a LUT that was read is written,
// read and written again.
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "effect/arbitrary.h"
#include "fuzz/require.h"
#include "fuzz/sparing.h"
#include "fuzz/written_text.h"
#include "native/src/lut_text.h"
#include "tests/support/luts.h"
#include "tests/support/samples_kept.h"
#include "tests/support/text_oracle.h"

namespace {

using twfuzz::require;
using twfuzz::WrittenText;

// A text in 16-bit units, the low byte first.
std::string unitsOf(const std::string& text) {
    std::string bytes;
    for (const char character : text)
        bytes += {character, '\0'};
    return bytes;
}

std::string extract(const std::string& bytes) {
    const std::string text = tw::embeddedText(bytes.data(), bytes.size());
    require(text == twtest::extractText(bytes.data(), bytes.size()),
            "embeddedText extracts by its rule");
    const bool begins = bytes.substr(0, 5) == "TWLUT" || bytes.substr(0, 10) == unitsOf("TWLUT");
    require(tw_effect::LooksEmbedded(bytes.data(), bytes.size()) == (begins && bytes.size() >= 10),
            "LooksEmbedded asks for ten bytes and the mark");
    return text;
}

// As twtest::readTextSlowly says.
bool read(const std::string& text, tw::Lut3D& lut) {
    const twtest::ReadText expected = twtest::readTextSlowly(text);
    std::string error;
    const bool ok = tw::parseEmbeddedText(text, lut, &error);
    require(ok == expected.ok, "the same texts are taken");
    require(error == expected.error, "\"" + error + "\" is \"" + expected.error + "\"");
    if (ok) require(twtest::sameLut(expected.lut, lut), "the record");
    return ok;
}

tw::Lut3D readBack(const std::string& text) {
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    const std::string bytes(reinterpret_cast<const char*>(units.data()), units.size() * 2);
    require(bytes == unitsOf(text), "a unit for each byte");
    require(extract(bytes) == text, "the text comes out of 16-bit units");
    require(extract(text) == text, "the text comes out of bytes");
    tw::Lut3D lut;
    require(tw::parseEmbeddedText(text, lut, nullptr), "what was written is read");
    return lut;
}

// Whether the text's numbers leave room for its codes: neither infinities nor ranges that overflow
// single precision, nor steps so fine that several codes become one float.
bool tellsCodesApart(float lo, float hi) {
    const float step = (hi - lo) / 65535.0f;
    const float largest = std::fmax(std::fabs(lo), std::fabs(hi));
    if (!(largest < 1e38f)) return false;
    return step > 2.0f * (std::nextafter(largest, 2e38f) - largest) &&
           step > std::numeric_limits<float>::min();
}

void writeAndReadAgain(const tw::Lut3D& lut) {
    const std::string first = tw::toEmbeddedText(lut, lut.id, lut.name);
    const WrittenText parts(first);
    require(parts.form == "TWLUT3", "the form that is written");
    if (!parts.readBackWhole()) return;
    const tw::Lut3D back = readBack(first);
    require(back.size == lut.size && back.id == lut.id, "size and id come back");
    require(back.name == (lut.name == "-" ? "" : lut.name), "the name comes back");
    const float lo = std::strtof(parts.lo.c_str(), nullptr);
    const float hi = std::strtof(parts.hi.c_str(), nullptr);
    if (std::fabs(lo) < 1e38f && std::fabs(hi) < 1e38f)
        require(twtest::samplesKept(lut, back, lo, hi), "the samples come back");
    if (!tellsCodesApart(lo, hi)) return;
    const std::string second = tw::toEmbeddedText(back, back.id, back.name);
    const WrittenText again(second);
    require(again.data == parts.data, "the same codes are written again");
    if (again.lo == parts.lo && again.hi == parts.hi)
        require(second == first, "the second writing is the first");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string text = extract(bytes);
    if (twfuzz::leaveOut(twtest::announcedSize(text))) return -1;
    tw::Lut3D lut;
    if (read(text, lut) && lut.size > 0) writeAndReadAgain(lut);
    return 0;
}
