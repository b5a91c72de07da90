#include "desk/engine/look.h"

#include <utility>

#include "looks/forms.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"

namespace desk {

Look::Look(std::string&& text) : text_(std::move(text)) {
    std::string reason;
    if (!tw::parseEmbeddedText(text_, lut_, &reason)) throw Refusal(std::move(reason));
}

Look Look::fromCube(const Bytes& contents, const std::string& name) {
    std::string text;
    std::string reason;
    if (!looks::textFromCube(contents.bytes, tw::fromUtf8(name), text, reason))
        throw Refusal(std::move(reason));
    return Look(std::move(text));
}

Look Look::fromText(const Bytes& contents) {
    std::string text = tw::embeddedText(contents.bytes.data(), contents.bytes.size());
    if (text.empty()) throw Refusal("it holds no TWLUT text");
    return Look(std::move(text));
}

Look Look::fromMeasured(tw::Lut3D&& lut) {
    std::string text;
    std::string reason;
    if (!looks::writeText(lut, text, reason)) throw Refusal(std::move(reason));
    Look look(std::move(text));
    look.measured_ = std::move(lut);
    return look;
}

Look Look::named(std::int64_t id, const std::string& name) const {
    tw::Lut3D lut = measured_ ? *measured_ : lut_;
    lut.id = id;
    lut.name = name;
    if (tw::kindOf(&lut) != tw::LutKind::kLut) throw Refusal("only a look with a LUT has a name");
    Look look = fromMeasured(std::move(lut));
    if (!measured_) look.measured_.reset();
    return look;
}

std::string Look::cube() const {
    if (tw::kindOf(&lut_) != tw::LutKind::kLut) throw Refusal("it holds no LUT");
    return looks::writeCube(measured_ ? *measured_ : lut_);
}

}  // namespace desk
