#include "fuzz/session/reference.h"

#include <algorithm>

#include "native/src/lut_text.h"
#include "tests/effect/arbitrary_fixture.h"
#include "tests/support/texts.h"

namespace session_fuzz {
namespace {

using twtest::kFreshBufferByte;
using twtest::kFreshHandleByte;
using twtest::widened;

const std::string kMark = "TWLUT";

// Counts one call down; true for the one that is refused.
bool reached(int& callsLeft) {
    if (callsLeft == 0) return false;
    --callsLeft;
    return callsLeft == 0;
}

bool beginsWith(const Bytes& bytes, const Bytes& start) {
    return bytes.size() >= start.size() && std::equal(start.begin(), start.end(), bytes.begin());
}

std::string labelOf(const std::optional<tw::Lut3D>& lut) {
    if (!lut) return "Choose a LUT";
    if (lut->probe != 0) return "Calibrating";
    if (lut->name.empty()) return "From Tintwell (Apply again to name it)";
    return lut->name + ".cube";
}

}  // namespace

bool looksEmbedded(const Bytes& bytes) {
    return bytes.size() >= 10 &&
           (beginsWith(bytes, twtest::bytesOf(kMark)) || beginsWith(bytes, widened(kMark)));
}

std::optional<tw::Lut3D> decoded(const Bytes& bytes) {
    const std::string text = tw::embeddedText(bytes.data(), bytes.size());
    tw::Lut3D lut;
    if (text.empty() || !tw::parseEmbeddedText(text, lut, nullptr)) return std::nullopt;
    if (lut.size == 0 && lut.probe == 0) return std::nullopt;
    return lut;
}

bool Reference::locks() {
    return !reached(lock);
}

Value Reference::made(const Bytes& bytes) {
    if (reached(allocation)) return std::nullopt;
    return locks() ? bytes : Bytes(bytes.size(), kFreshHandleByte);
}

Value Reference::none() {
    return made(twtest::emptyLut());
}

Value Reference::copy(const Value& source) {
    return source && locks() && looksEmbedded(*source) ? made(*source) : none();
}

Value Reference::unflatten(const Value& flat) {
    return flat && looksEmbedded(*flat) ? made(*flat) : none();
}

std::optional<Value> Reference::scan(const std::string& text) {
    tw::Lut3D lut;
    if (!tw::parseEmbeddedText(text, lut, nullptr)) return std::nullopt;
    return made(widened(text));
}

Bytes Reference::flatten(const Value& value, std::size_t bufferSize) {
    Bytes buffer(bufferSize, kFreshBufferByte);
    if (value && locks() && value->size() <= bufferSize)
        std::copy(value->begin(), value->end(), buffer.begin());
    return buffer;
}

PF_ArbCompareResult Reference::compare(const Value& a, const Value& b) {
    if (!a && !b) return PF_ArbCompare_EQUAL;
    if (!a || !b || a->size() != b->size()) return PF_ArbCompare_NOT_EQUAL;
    const bool lockedA = locks();
    const bool lockedB = locks();
    return lockedA && lockedB && *a == *b ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL;
}

std::string Reference::print(const Value& value) {
    return value && locks() ? tw::embeddedText(value->data(), value->size()) : "";
}

std::optional<tw::Lut3D> Reference::lutOf(const Value& value) {
    return value && locks() ? decoded(*value) : std::nullopt;
}

PF_Err Reference::store(const std::string& text, Value& value) {
    const Bytes bytes = widened(text);
    if (!value) {
        value = made(bytes);
        return value ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
    }
    if (reached(resize)) return PF_Err_OUT_OF_MEMORY;
    value->resize(bytes.size(), kFreshHandleByte);
    if (locks()) value = bytes;
    return PF_Err_NONE;
}

std::string Reference::label(const Value& value, const std::string& before) {
    const std::string now = labelOf(lutOf(value));
    // The host reads it as far as its first zero byte.
    return noParamUtils || paramUpdateError != 0 ? before : now.c_str();
}

}  // namespace session_fuzz
