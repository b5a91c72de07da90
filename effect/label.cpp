#include "effect/label.h"

#include <set>
#include <string>

#include "effect/params.h"
#include "effect/stored_lut.h"
#include "effect/suite.h"
#include "native/src/log.h"
#include "native/src/log_on_change.h"
#include "native/src/mutex.h"
#include "native/src/never_destroyed.h"

namespace tw_effect {
namespace {

std::string labelOf(const tw::Lut3D* lut) {
    const tw::LutKind kind = tw::kindOf(lut);
    if (kind == tw::LutKind::kNone) return "Choose a LUT";
    if (kind == tw::LutKind::kPattern) return "Calibrating";
    if (lut->name.empty()) return "From Tintwell (Apply again to name it)";
    return lut->name + ".cube";
}

struct KeptLabels {
    tw::Mutex mu{"kept labels"};
    std::set<std::string> texts;
};

const char* keep(const std::string& label) {
    static tw::NeverDestroyed<KeptLabels> kept;
    const std::lock_guard lock(kept->mu);
    return kept->texts.insert(label).first->c_str();
}

PF_Err pushLabel(const PF_InData& host, const PF_ParamUtilsSuite3& suite, const PF_ParamDef& button,
                 const char* label) {
    PF_ParamDef labelled = button;
    setName(labelled, kLutButtonName);
    labelled.u.button_d.u.namesptr = label;
    return suite.PF_UpdateParamUI(host.effect_ref, kParamLutButton, &labelled);
}

// Hosts ask for an update many times a second.
void logLabel(const char* reason, const char* label, PF_Err result) {
    static tw::NeverDestroyed<tw::LogOnChange> lines("label line");
    const std::string err = std::to_string(result);
    const std::string key = std::string(reason) + "|" + label + "|" + err;
    const std::string line =
        std::string("LUT button: label \"") + label + "\" (" + reason + ") -> err " + err;
    lines->log(key, line.c_str());
}

}  // namespace

void ShowLutName(const PF_InData& host, PF_ParamDef* const* params, const char* reason) {
    const std::string text = labelOf(storedLut(host, params).get());
    const char* label = keep(text);
    PF_Err result = PF_Err_NONE;
    {
        const ParamUtils suite(host.pica_basicP);
        if (!suite) {
            tw::logLine("LUT button: no param utils suite (%s)", reason);
            return;
        }
        result = pushLabel(host, *suite.get(), *params[kParamLutButton], label);
    }
    logLabel(reason, label, result);
}

}  // namespace tw_effect
