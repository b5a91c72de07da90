#include "effect/params.h"

#include <cstring>

#include "effect/arbitrary.h"

namespace tw_effect {
namespace {

// Holds nothing; its address is what tells this parameter in the data callbacks.
char kArbRefcon = 0;

// A definition with all bytes zero but its kind, name and identity.
PF_ParamDef blank(PF_ParamType type, const char* name, A_long id) {
    PF_ParamDef def;
    std::memset(&def, 0, sizeof def);
    def.param_type = type;
    setName(def, name);
    def.uu.id = id;
    return def;
}

PF_ParamDef amount() {
    PF_ParamDef def = blank(PF_Param_FLOAT_SLIDER, "Amount", kIdAmount);
    PF_FloatSliderDef& slider = def.u.fs_d;
    slider.valid_min = slider.slider_min = 0.0f;
    slider.valid_max = slider.slider_max = 100.0f;
    slider.dephault = 100.0f;
    slider.value = 100.0;
    slider.precision = PF_Precision_TENTHS;
    slider.display_flags = PF_ValueDisplayFlag_PERCENT;
    return def;
}

// The default value's handle belongs to the host from add_param on, also when it refuses: what a
// host did with it before it refused is not known, and a handle freed twice is worse than one lost.
PF_ParamDef lut(const PF_InData& host) {
    PF_ParamDef def = blank(PF_Param_ARBITRARY_DATA, "LUT", kIdLut);
    def.flags = PF_ParamFlag_CANNOT_TIME_VARY;
    def.ui_flags = PF_PUI_NO_ECW_UI;
    def.ui_width = def.ui_height = 1;
    def.u.arb_d.id = kIdLut;
    def.u.arb_d.dephault = NewEmptyArb(host);
    def.u.arb_d.refconPV = &kArbRefcon;
    return def;
}

PF_ParamDef button(const char* name, A_long id, const char* label) {
    PF_ParamDef def = blank(PF_Param_BUTTON, name, id);
    def.flags = PF_ParamFlag_SUPERVISE | PF_ParamFlag_CANNOT_TIME_VARY;
    def.u.button_d.u.namesptr = label;
    return def;
}

PF_Err declare(const PF_InData& host, PF_ParamDef def) {
    constexpr PF_ParamIndex kAppend = -1;
    return host.inter.add_param(host.effect_ref, kAppend, &def);
}

}  // namespace

PF_Err ParamsSetup(const PF_InData& host, PF_OutData& out) {
    PF_Err refusal = declare(host, amount());
    if (!refusal) refusal = declare(host, lut(host));
    if (!refusal) refusal = declare(host, button(kLutButtonName, kIdLutButton, "Change LUT"));
    if (!refusal) refusal = declare(host, button("Match", kIdEditButton, "Edit LUT"));
    if (!refusal) out.num_params = kParamCount;
    return refusal;
}

}  // namespace tw_effect
