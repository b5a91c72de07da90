#include "effect/lut_button.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "effect/alert.h"
#include "effect/host_handle.h"
#include "effect/label.h"
#include "effect/lut_file.h"
#include "effect/params.h"
#include "native/src/log.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "platform/mac/dialogs.h"

namespace tw_effect {
namespace {

std::wstring pickFile() {
    const std::string folder = tw::toUtf8(tw::lutFolder());
    tw::logLine("LUT button: dialog in \"%s\"", folder.c_str());
    return tw::fromUtf8(tw_mac::PickCube(folder));
}

// The user is told which file, not why: the parser's words are for the log.
void refuseUnreadable(const std::wstring& path, const std::string& reason) {
    tw::logLine("LUT button: could not read %s: %s", tw::toUtf8(path).c_str(), reason.c_str());
    Alert(L"Tintwell could not read this LUT:\n" + path, true);
}

void refuseDomain(const std::wstring& path) {
    tw::logLine("LUT button: %s has a domain other than 0..1", tw::toUtf8(path).c_str());
    Alert(L"Tintwell only takes LUTs with a 0..1 domain.", true);
}

// False when the host has no memory; the parameter then keeps what it holds.
bool store(const PF_InData& host, PF_ParamDef& lut, const void* bytes, std::size_t size) {
    PF_Handle handle = lut.u.arb_d.value;
    if (!handle) {
        handle = newHandle(host, bytes, size);
        if (!handle) return false;
    } else {
        if (host.utils->host_resize_handle(size, &handle) != PF_Err_NONE) return false;
        fillHandle(host, handle, bytes, size);
    }
    lut.u.arb_d.value = handle;
    lut.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    return true;
}

}  // namespace

PF_Err PressLutButton(const PF_InData& host, PF_ParamDef* const* params, PF_OutData& out) {
    const std::wstring path = pickFile();
    if (path.empty()) {
        tw::logLine("LUT button: cancelled");
        return PF_Err_NONE;
    }

    tw::LutFile file;
    std::string reason;
    switch (loadLutFile(path, file, reason)) {
        case tw::LutFileResult::kUnreadable:
            refuseUnreadable(path, reason);
            return PF_Err_NONE;
        case tw::LutFileResult::kForeignDomain:
            refuseDomain(path);
            return PF_Err_NONE;
        case tw::LutFileResult::kLoaded:
            break;
    }

    const std::vector<std::uint16_t> units = tw::toUtf16(file.text);
    const std::size_t size = units.size() * sizeof(std::uint16_t);
    if (!store(host, *params[kParamLut], units.data(), size)) return PF_Err_OUT_OF_MEMORY;
    out.out_flags |= PF_OutFlag_REFRESH_UI | PF_OutFlag_FORCE_RERENDER;
    tw::logLine("LUT button: loaded %s (%d^3, %zu bytes)", tw::toUtf8(path).c_str(), file.size,
                size);
    ShowLutName(host, params, "picked");
    return PF_Err_NONE;
}

}  // namespace tw_effect
