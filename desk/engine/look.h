// A look as JavaScript holds it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "desk/engine/bytes.h"
#include "native/src/lut_engine.h"

namespace desk {

// The functions throw Refusal with one sentence for the user. Never changes once made.
class Look {
public:
    // A .cube file by the rules of the LUT button; `name` is the file's.
    static Look fromCube(const Bytes& contents, const std::string& name);
    // A TWLUT text in 8 or 16 bits.
    static Look fromText(const Bytes& contents);
    // A measured LUT with its id and name.
    static Look fromMeasured(tw::Lut3D&& lut);

    // The same look under another match and name.
    Look named(std::int64_t id, const std::string& name) const;

    // What the effect makes of the text.
    const tw::Lut3D& lut() const { return lut_; }
    // What the effect's LUT parameter holds.
    const std::string& text() const { return text_; }
    // The .cube file of the look; of a measured one with all that was measured.
    std::string cube() const;

private:
    explicit Look(std::string&& text);

    std::string text_;
    tw::Lut3D lut_;
    std::optional<tw::Lut3D> measured_;
};

// To be told to the user.
class Refusal : public std::exception {
public:
    explicit Refusal(std::string&& sentence) : sentence_(std::move(sentence)) {}
    const char* what() const noexcept override { return sentence_.c_str(); }

private:
    std::string sentence_;
};

}  // namespace desk
