#include "fuzz/session/random_texts.h"

#include "native/src/lut_text.h"
#include "tests/support/luts.h"
#include "tests/support/texts.h"

namespace session_fuzz {
namespace {

tw::Lut3D makeLut(Record& record) {
    const int size = 2 + record.below(4);
    return twtest::scatteredLut(size, record.byte());
}

// A panel's ids are positive; the others must do no harm.
long makeId(Record& record) {
    constexpr long kIds[] = {0, 1, 7, -1, 2147483648, 9223372036854775807};
    return kIds[record.below(6)];
}

// One change at one place, or none.
std::string spoilt(std::string text, Record& record) {
    const int how = record.below(5);
    const std::size_t at = record.place(text.size() + 1);
    switch (how) {
        case 1:
            return text.substr(0, at);
        case 2:
            return text.insert(at, record.rest());
        case 3: {
            const std::string patch = record.rest();
            return text.replace(at, patch.size(), patch);
        }
        case 4:
            return text.erase(at, record.byte());
        default:
            return text;
    }
}

std::string named(Record& record) {
    const tw::Lut3D lut = makeLut(record);
    const long id = makeId(record);
    return tw::toEmbeddedText(lut, id, record.rest());
}

// "TWLUT3 <id> - <size> ..." without what the older forms do not have.
std::string older(Record& record) {
    const tw::Lut3D lut = makeLut(record);
    const bool hasId = record.flag();
    const std::string id = std::to_string(makeId(record));
    const std::string whole = tw::toEmbeddedText(lut, 0, "");
    const std::string numbers = whole.substr(std::string("TWLUT3 0 - ").size());
    return hasId ? "TWLUT2 " + id + " " + numbers : "TWLUT1 " + numbers;
}

std::string spoiltText(Record& record) {
    const tw::Lut3D lut = makeLut(record);
    const long id = makeId(record);
    return spoilt(tw::toEmbeddedText(lut, id, "Dusk 100%"), record);
}

std::string wholeCube(Record& record) {
    const tw::Lut3D lut = makeLut(record);
    std::string text = "TITLE \"dusk\"\n# Tintwell match " + std::to_string(makeId(record)) +
                       "\nLUT_3D_SIZE " + std::to_string(lut.size) + "\n";
    for (std::size_t i = 0; i < lut.data.size(); ++i)
        text += std::to_string(lut.data[i]) + (i % 3 == 2 ? "\n" : " ");
    return text;
}

}  // namespace

std::string makeText(Record& record) {
    switch (record.below(6)) {
        case 1:
            return "TWLUT0";
        case 2:
            return "TWLUTP " + std::to_string(record.byte());
        case 3:
            return named(record);
        case 4:
            return older(record);
        case 5:
            return spoiltText(record);
        default:
            return record.rest();
    }
}

Bytes makeBytes(Record& record) {
    const int form = record.below(5);
    const std::string text = form == 0 ? record.rest() : makeText(record);
    switch (form) {
        case 0:
        case 1:
            return twtest::bytesOf(text);
        case 2:
            return twtest::bigEndian(text);
        case 3: {
            Bytes odd = twtest::widened(text);
            odd.push_back(0);
            return odd;
        }
        default:
            return twtest::widened(text);
    }
}

std::string makeCube(Record& record) {
    switch (record.below(3)) {
        case 1:
            return wholeCube(record);
        case 2:
            return spoilt(wholeCube(record), record);
        default:
            return record.rest();
    }
}

}  // namespace session_fuzz
