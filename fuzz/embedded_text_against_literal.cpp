// The reader of the LUT parameter against the one of the tests, which takes a copy of the text and
// a character at a time: the same record, whole or cut off, and the same words. The input is a
// parameter's bytes; where they hold a text of 8 bits, also in 16-bit units. Half of the inputs
// describe a longer text instead, which fills the decoder's batches, with faults strewn over it.
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/lut_input.h"
#include "fuzz/require.h"
#include "fuzz/sparing.h"
#include "native/src/lut_text.h"
#include "native/src/text/lut_text_reader.h"
#include "tests/support/luts.h"
#include "tests/support/text_oracle.h"

namespace {

using twfuzz::Input;
using twfuzz::require;

void check(const std::string& bytes) {
    // Memory of its very size.
    const std::vector<char> exact(bytes.begin(), bytes.end());
    const twtest::ReadText expected = twtest::readParameterSlowly(exact.data(), exact.size());
    tw::Lut3D lut;
    std::string error;
    const bool ok = tw::readParameter(exact.data(), exact.size(), lut, &error);
    require(ok == expected.ok, "the same bytes are taken");
    require(error == expected.error, "\"" + error + "\" is \"" + expected.error + "\"");
    require(twtest::sameLut(expected.lut, lut), "the record, as far as it was read");
}

std::string unitsOf(const std::string& text) {
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    return {reinterpret_cast<const char*>(units.data()), units.size() * 2};
}

std::string shown(float value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.9g", static_cast<double>(value));
    return text;
}

// Whole data of 2..9 points, then characters put over others, in and removed.
std::string describedText(Input& input) {
    const auto size = static_cast<std::int32_t>(2 + input.below(8));
    const auto lo = input.number<float>();
    const auto hi = input.number<float>();
    std::string text = "TWLUT1 " + std::to_string(size) + " " + shown(lo) + " " + shown(hi) + " ";
    const std::size_t characters = tw::latticeFloats(size) * 16 / 6;
    for (const std::uint8_t letter : twfuzz::spread<std::uint8_t>(input, 64, characters))
        text += "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"[letter % 64];
    for (std::uint32_t edits = input.below(6); edits > 0; --edits) {
        const std::size_t at = input.number<std::uint16_t>() % text.size();
        const char character = static_cast<char>(input.byte());
        const std::uint32_t kind = input.below(4);
        if (kind == 0) text[at] = character;
        if (kind == 1) text.insert(at, 1 + input.below(9), character);
        if (kind == 2) text.erase(at, 1 + input.below(9));
        if (kind == 3) text += character;
    }
    return text;
}

void checkDescribed(Input& input) {
    const std::string text = describedText(input);
    check(text);
    std::string units = unitsOf(text);
    check(units);
    units[input.number<std::uint16_t>() % units.size()] = static_cast<char>(input.byte());
    check(units);
    units.pop_back();
    check(units);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    // From 0x80 on the first byte asks for a described text, as in a few files of the corpus; all
    // other inputs are a parameter's bytes as they are.
    if (size > 0 && data[0] >= 0x80) {
        input.byte();
        checkDescribed(input);
        return 0;
    }
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const std::string text = twtest::extractText(bytes.data(), bytes.size());
    if (twfuzz::leaveOut(twtest::announcedSize(text))) return -1;
    check(bytes);
    check(unitsOf(bytes));
    return 0;
}
