// A reference model of the effect: what it has to answer. Memory is plain bytes; refusals of the
// host are counted in the order in which the effect has to call.
#pragma once

#include <optional>
#include <string>

#include "fuzz/session/script.h"
#include "host_api/host_api.h"
#include "native/src/lut_engine.h"

namespace session_fuzz {

// What a handle holds; nothing: a null handle.
using Value = std::optional<Bytes>;

// Whether copies and projects keep such contents.
bool looksEmbedded(const Bytes& bytes);

// What a LUT is to the label and the pictures; nothing: no LUT. Does without the effect's cache.
std::optional<tw::Lut3D> decoded(const Bytes& bytes);

class Reference {
public:
    // Calls left until the refused one; 0: none.
    int allocation = 0;
    int lock = 0;
    int resize = 0;
    bool noParamUtils = false;
    bool noPixelFormats = false;
    bool noBasicSuite = false;
    PF_Err paramUpdateError = 0;
    PF_Err pixelFormatError = 0;

    Value made(const Bytes& bytes);
    Value none();
    Value copy(const Value& source);
    Value unflatten(const Value& flat);
    // Nothing: the text is refused with an error.
    std::optional<Value> scan(const std::string& text);
    // The buffer of so many bytes, afterwards.
    Bytes flatten(const Value& value, std::size_t bufferSize);
    PF_ArbCompareResult compare(const Value& a, const Value& b);
    std::string print(const Value& value);
    std::optional<tw::Lut3D> lutOf(const Value& value);
    // The LUT button has read this text. Returns PF_Err_OUT_OF_MEMORY, or 0 with `value` changed.
    PF_Err store(const std::string& text, Value& value);
    // The button's label after PF_Cmd_UPDATE_PARAMS_UI.
    std::string label(const Value& value, const std::string& before);

private:
    bool locks();
};

}  // namespace session_fuzz
