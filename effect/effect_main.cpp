#include "effect/arbitrary.h"
#include "effect/edit_request.h"
#include "effect/entry_points.h"
#include "effect/global.h"
#include "effect/label.h"
#include "effect/lut_button.h"
#include "effect/params.h"
#include "effect/render.h"
#include "native/src/log.h"

namespace tw_effect {
namespace {

PF_Err userChangedParam(const PF_InData& host, PF_OutData& out, PF_ParamDef* const* params,
                        const PF_UserChangedParamExtra* changed) {
    const PF_ParamIndex index = changed ? changed->param_index : -1;
    tw::logLine("USER_CHANGED_PARAM index %d", index);
    switch (index) {
        case kParamLutButton:
            return PressLutButton(host, params, out);
        case kParamEditButton:
            return RequestEdit(host, params);
        default:
            return PF_Err_NONE;
    }
}

PF_Err updateParamsUi(const PF_InData& host, PF_ParamDef* const* params) {
    ShowLutName(host, params, "update");
    return PF_Err_NONE;
}

// The effect has no sequence data, no frame data and no smart rendering: commands that are not
// listed need no answer.
PF_Err dispatch(PF_Cmd cmd, const PF_InData* host, PF_OutData* out, PF_ParamDef** params,
                PF_LayerDef* output, void* extra) {
    switch (cmd) {
        case PF_Cmd_ABOUT:
            return About(*out);
        case PF_Cmd_GLOBAL_SETUP:
            return GlobalSetup(*host, *out);
        case PF_Cmd_PARAMS_SETUP:
            return ParamsSetup(*host, *out);
        case PF_Cmd_RENDER:
            return Render(*host, params, *output);
        case PF_Cmd_USER_CHANGED_PARAM:
            return userChangedParam(*host, *out, params,
                                    static_cast<const PF_UserChangedParamExtra*>(extra));
        case PF_Cmd_UPDATE_PARAMS_UI:
            return updateParamsUi(*host, params);
        case PF_Cmd_ARBITRARY_CALLBACK:
            return Arbitrary(*host, *static_cast<const PF_ArbParamsExtra*>(extra));
        default:
            return PF_Err_NONE;
    }
}

// The one place where exceptions end: none may cross into a host. Nothing is logged, since what
// went wrong is most likely memory.
template <typename Command>
PF_Err guarded(Command command) noexcept {
    try {
        return command();
    } catch (...) {
        return PF_Err_INTERNAL_STRUCT_DAMAGED;
    }
}

}  // namespace
}  // namespace tw_effect

PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef** params,
                  PF_LayerDef* output, void* extra) {
    return tw_effect::guarded(
        [&] { return tw_effect::dispatch(cmd, in_data, out_data, params, output, extra); });
}
