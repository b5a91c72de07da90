// A small effect module that behaves well, except for the one fault that the host's name asks for
// at the registration. It inverts pixels; its arbitrary value is any text.
#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include "host_api/host_api.h"

#define ROGUE_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

std::string fault;
char changingText[] = "first";
int noHandle = 0;

bool has(const char* name) {
    return fault == name;
}

PF_Handle newHandle(PF_InData* in, const std::string& text) {
    const PF_Handle handle = in->utils->host_new_handle(text.size());
    if (handle == nullptr) return nullptr;
    if (void* block = in->utils->host_lock_handle(handle)) {
        std::memcpy(block, text.data(), text.size());
    }
    in->utils->host_unlock_handle(handle);
    return handle;
}

std::string textOf(PF_InData* in, PF_Handle handle) {
    if (handle == nullptr) return "";
    const auto size = in->utils->host_get_handle_size(handle);
    std::string text;
    if (const void* block = in->utils->host_lock_handle(handle)) {
        text.assign(static_cast<const char*>(block), size);
    }
    in->utils->host_unlock_handle(handle);
    return text;
}

const void* acquire(PF_InData* in, const char* name, A_long version) {
    const void* suite = nullptr;
    if (in->pica_basicP == nullptr) return nullptr;
    const SPErr error = in->pica_basicP->AcquireSuite(name, version, &suite);
    return error == kSPNoError ? suite : nullptr;
}

void release(PF_InData* in, const char* name, A_long version) {
    in->pica_basicP->ReleaseSuite(name, version);
}

PF_Err globalSetup(PF_InData* in, PF_OutData* out) {
    out->out_flags |= PF_OutFlag_SEND_UPDATE_PARAMS_UI;
    if (has("writes beside out_data")) out[1].my_version = 1;
    const auto* suite = static_cast<const PF_PixelFormatSuite*>(
        acquire(in, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1));
    if (suite == nullptr) return PF_Err_NONE;
    suite->ClearSupportedPixelFormats(in->effect_ref);
    suite->AddSupportedPixelFormat(in->effect_ref, PrPixelFormat_BGRA_4444_32f);
    suite->AddSupportedPixelFormat(in->effect_ref, PrPixelFormat_BGRA_4444_8u);
    if (has("uses a wrong effect_ref")) suite->ClearSupportedPixelFormats(nullptr);
    if (has("forgets a suite")) return PF_Err_NONE;
    release(in, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1);
    if (has("releases a suite twice")) {
        release(in, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1);
    }
    return PF_Err_NONE;
}

PF_ParamDef slider() {
    PF_ParamDef def = {};
    def.param_type = PF_Param_FLOAT_SLIDER;
    def.uu.id = 2;
    std::strcpy(def.name, "Amount");
    def.u.fs_d.valid_max = def.u.fs_d.slider_max = def.u.fs_d.dephault = 100.0F;
    if (has("gives a slider bad ranges")) def.u.fs_d.slider_max = 101.0F;
    if (has("forgets to clear a definition")) def.unused = 1;
    if (has("leaves a name without an end")) std::memset(def.name, 'x', sizeof(def.name));
    if (has("declares an unknown type")) def.param_type = 7;
    return def;
}

PF_ParamDef arbitrary(PF_InData* in) {
    PF_ParamDef def = {};
    def.param_type = PF_Param_ARBITRARY_DATA;
    def.uu.id = has("uses an id twice") ? 2 : 4;
    def.ui_flags = has("leaves out the UI flags") ? PF_PUI_NONE : PF_PUI_NO_ECW_UI;
    std::strcpy(def.name, "Text");
    def.u.arb_d.id = 4;
    def.u.arb_d.dephault = newHandle(in, "none");
    def.u.arb_d.refconPV = &fault;
    if (has("gives a default that is no handle")) {
        in->utils->host_dispose_handle(def.u.arb_d.dephault);
    }
    if (has("gives a value")) def.u.arb_d.value = def.u.arb_d.dephault;
    return def;
}

PF_ParamDef button() {
    PF_ParamDef def = {};
    def.param_type = PF_Param_BUTTON;
    def.uu.id = 5;
    def.flags = has("does not supervise a button") ? PF_ParamFlag_NONE : PF_ParamFlag_SUPERVISE;
    std::strcpy(def.name, "Press");
    def.u.button_d.u.namesptr = "Press me";
    return def;
}

PF_Err paramsSetup(PF_InData* in, PF_OutData* out) {
    PF_ParamDef defs[3] = {slider(), arbitrary(in), button()};
    for (PF_ParamDef& def : defs) {
        const PF_ParamIndex index = has("inserts a parameter") ? 1 : -1;
        if (const PF_Err error = in->inter.add_param(in->effect_ref, index, &def)) return error;
    }
    if (has("adds a null definition")) in->inter.add_param(in->effect_ref, -1, nullptr);
    out->num_params = has("counts wrongly") ? 3 : 4;
    return PF_Err_NONE;
}

void misuseHandles(PF_InData* in) {
    _PF_UtilCallbacks& host = *in->utils;
    PF_Handle handle = newHandle(in, "eight by");
    if (has("writes past a block")) (*handle)[8] = 0;
    if (has("writes before a block")) (*handle)[-1] = 0;
    if (has("unlocks twice")) host.host_unlock_handle(handle);
    if (has("leaves a lock")) host.host_lock_handle(handle);
    if (has("resizes a locked handle")) {
        host.host_lock_handle(handle);
        host.host_resize_handle(100, &handle);
        host.host_unlock_handle(handle);
    }
    if (has("leaks a handle") || has("leaves a lock")) return;
    if (has("disposes of a locked handle")) host.host_lock_handle(handle);
    host.host_dispose_handle(handle);
    if (has("disposes twice")) host.host_dispose_handle(handle);
    if (has("uses a disposed handle")) host.host_lock_handle(handle);
    if (has("asks the size of null")) host.host_get_handle_size(nullptr);
    char* wild = nullptr;
    if (has("unlocks a wild pointer")) host.host_unlock_handle(&wild);
}

void misuseCallbacks(PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef* output) {
    if (has("adds a parameter late")) in->inter.add_param(in->effect_ref, -1, params[1]);
    if (has("changes a parameter")) params[1]->u.fs_d.value = 1.0;
    if (has("exchanges a parameter")) params[1] = params[2];
    if (has("overwrites the end of params")) params[4] = params[0];
    if (has("writes in_data")) in->width = 1;
    if (has("leaves a message without an end")) std::memset(out->return_msg, 'x', 256);
    if (has("throws")) throw std::runtime_error("oops");
    if (has("unlocks the host's lock")) {
        in->utils->host_unlock_handle(params[2]->u.arb_d.value);
    }
    if (has("asks about a foreign world") || has("adds a format late")) {
        const auto* suite = static_cast<const PF_PixelFormatSuite*>(
            acquire(in, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1));
        PF_EffectWorld foreign = {};
        PrPixelFormat format = PrPixelFormat_Any;
        if (has("asks about a foreign world")) suite->GetPixelFormat(&foreign, &format);
        if (has("adds a format late")) suite->AddSupportedPixelFormat(in->effect_ref, format);
        release(in, kPFPixelFormatSuite, kPFPixelFormatSuiteVersion1);
    }
    if (has("writes after a row")) reinterpret_cast<char*>(output->data)[output->width * 4] = 0;
    if (has("writes before the picture")) reinterpret_cast<char*>(output->data)[-1] = 0;
    if (has("writes a row too many")) {
        reinterpret_cast<char*>(output->data)[output->rowbytes * output->height] = 0;
    }
    if (has("writes the input")) params[0]->u.ld.data->red ^= 1;
}

// 8-bit pixels only, all four channels, whatever their order.
PF_Err render(PF_InData* in, PF_OutData* out, PF_ParamDef** params, PF_LayerDef* output) {
    misuseHandles(in);
    misuseCallbacks(in, out, params, output);
    const PF_LayerDef& input = params[0]->u.ld;
    for (A_long y = 0; y < std::min(input.height, output->height); ++y) {
        const auto* from = reinterpret_cast<const A_u_char*>(input.data) + y * input.rowbytes;
        auto* to = reinterpret_cast<A_u_char*>(output->data) + y * output->rowbytes;
        for (A_long i = 0; i < 4 * output->width; ++i)
            to[i] = static_cast<A_u_char>(~from[i]);
    }
    return PF_Err_NONE;
}

// A press appends a "+" to the text.
PF_Err press(PF_InData* in, PF_OutData* out, PF_ParamDef** params,
             const PF_UserChangedParamExtra* extra) {
    if (extra == nullptr || extra->param_index != 3) return PF_Err_NONE;
    PF_ParamDef& param = *params[2];
    if (has("edits without a flag")) {
        params[1]->u.fs_d.value = 1.0;
        return PF_Err_NONE;
    }
    const std::string text = textOf(in, param.u.arb_d.value) + "+";
    if (param.u.arb_d.value == nullptr) {
        param.u.arb_d.value = in->utils->host_new_handle(text.size());
        if (param.u.arb_d.value == nullptr) return PF_Err_OUT_OF_MEMORY;
    } else if (in->utils->host_resize_handle(text.size(), &param.u.arb_d.value) != 0) {
        return PF_Err_OUT_OF_MEMORY;
    }
    if (void* block = in->utils->host_lock_handle(param.u.arb_d.value)) {
        std::memcpy(block, text.data(), text.size());
    }
    in->utils->host_unlock_handle(param.u.arb_d.value);
    if (has("stores no handle on a press")) {
        param.u.arb_d.value = reinterpret_cast<PF_Handle>(&noHandle);
    }
    param.uu.change_flags = PF_ChangeFlag_CHANGED_VALUE;
    if (has("flags more than a change")) param.uu.change_flags |= 0x5A;
    out->out_flags |= PF_OutFlag_REFRESH_UI;
    return PF_Err_NONE;
}

void updateLabel(PF_InData* in, PF_ParamDef** params) {
    const auto* suite = static_cast<const PF_ParamUtilsSuite3*>(
        acquire(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3));
    if (suite == nullptr) return;
    PF_ParamDef copy = *params[3];
    copy.u.button_d.u.namesptr = changingText;
    const PF_ParamIndex index = has("updates the input layer") ? 0 : 3;
    const bool none = has("updates with a null definition");
    if (has("updates with another type")) copy = *params[1];
    suite->PF_UpdateParamUI(in->effect_ref, index, none ? nullptr : &copy);
    release(in, kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3);
}

PF_Err print(PF_InData* in, const PF_ArbParamsExtra& extra) {
    const auto& print = extra.u.print_func_params;
    const std::string text = textOf(in, print.arbH);
    if (print.print_sizeLu == 0) return PF_Err_NONE;
    const std::size_t count = std::min<std::size_t>(print.print_sizeLu - 1, text.size());
    std::memcpy(print.print_bufferPC, text.data(), count);
    print.print_bufferPC[count] = has("prints no end") ? 'x' : '\0';
    if (has("prints too far")) print.print_bufferPC[print.print_sizeLu] = '\0';
    return PF_Err_NONE;
}

PF_Err scan(PF_InData* in, const PF_ArbParamsExtra& extra) {
    const auto& scan = extra.u.scan_func_params;
    const std::string text(scan.bufPC, scan.bytes_to_scanLu);
    if (text == "bad") return PF_Err_CANNOT_PARSE_KEYFRAME_TEXT;
    *scan.arbPH = newHandle(in, text);
    return PF_Err_NONE;
}

PF_Err flatten(PF_InData* in, const PF_ArbParamsExtra& extra) {
    const auto& flatten = extra.u.flatten_func_params;
    const std::string text = textOf(in, flatten.arbH);
    if (text.size() > flatten.buf_sizeLu) return PF_Err_NONE;
    std::memcpy(flatten.flat_dataPV, text.data(), text.size());
    if (has("flattens too far")) static_cast<char*>(flatten.flat_dataPV)[text.size()] = 0;
    return PF_Err_NONE;
}

PF_Err copy(PF_InData* in, const PF_ArbParamsExtra& extra) {
    const auto& copy = extra.u.copy_func_params;
    if (has("copies nothing")) return PF_Err_NONE;
    *copy.dst_arbPH = newHandle(in, textOf(in, copy.src_arbH));
    if (has("copies to no handle")) *copy.dst_arbPH = reinterpret_cast<PF_Handle>(&noHandle);
    return PF_Err_NONE;
}

PF_Err unflatten(PF_InData* in, const PF_ArbParamsExtra& extra) {
    const auto& unflatten = extra.u.unflatten_func_params;
    const auto* bytes = static_cast<const char*>(unflatten.flat_dataPV);
    *unflatten.arbPH =
        newHandle(in, bytes == nullptr ? "" : std::string(bytes, unflatten.buf_sizeLu));
    return PF_Err_NONE;
}

PF_Err arbitraryCallback(PF_InData* in, PF_ArbParamsExtra& extra) {
    switch (extra.which_function) {
        case PF_Arbitrary_NEW_FUNC:
            *extra.u.new_func_params.arbPH = newHandle(in, "none");
            return PF_Err_NONE;
        case PF_Arbitrary_DISPOSE_FUNC:
            in->utils->host_dispose_handle(extra.u.dispose_func_params.arbH);
            return PF_Err_NONE;
        case PF_Arbitrary_COPY_FUNC:
            return copy(in, extra);
        case PF_Arbitrary_FLAT_SIZE_FUNC:
            if (has("tells no size")) return PF_Err_NONE;
            *extra.u.flat_size_func_params.flat_data_sizePLu = static_cast<A_u_long>(
                in->utils->host_get_handle_size(extra.u.flat_size_func_params.arbH));
            return PF_Err_NONE;
        case PF_Arbitrary_FLATTEN_FUNC:
            return flatten(in, extra);
        case PF_Arbitrary_UNFLATTEN_FUNC:
            return unflatten(in, extra);
        case PF_Arbitrary_INTERP_FUNC:
            *extra.u.interp_func_params.interpPH =
                newHandle(in, textOf(in, extra.u.interp_func_params.left_arbH));
            return PF_Err_NONE;
        case PF_Arbitrary_COMPARE_FUNC:
            if (has("compares nothing")) return PF_Err_NONE;
            *extra.u.compare_func_params.compareP =
                textOf(in, extra.u.compare_func_params.a_arbH) ==
                        textOf(in, extra.u.compare_func_params.b_arbH)
                    ? PF_ArbCompare_EQUAL
                    : PF_ArbCompare_NOT_EQUAL;
            return PF_Err_NONE;
        case PF_Arbitrary_PRINT_SIZE_FUNC:
            *extra.u.print_size_func_params.print_sizePLu =
                static_cast<A_u_long>(textOf(in, extra.u.print_size_func_params.arbH).size() + 1);
            return PF_Err_NONE;
        case PF_Arbitrary_PRINT_FUNC:
            return print(in, extra);
        case PF_Arbitrary_SCAN_FUNC:
            return scan(in, extra);
        default:
            return PF_Err_NONE;
    }
}

}  // namespace

ROGUE_EXPORT PF_Err RogueMain(PF_Cmd command, PF_InData* in, PF_OutData* out, PF_ParamList params,
                              PF_LayerDef* output, void* extra) {
    switch (command) {
        case PF_Cmd_ABOUT:
            std::strcpy(out->return_msg, "Rogue");
            return PF_Err_NONE;
        case PF_Cmd_GLOBAL_SETUP:
            return globalSetup(in, out);
        case PF_Cmd_PARAMS_SETUP:
            return paramsSetup(in, out);
        case PF_Cmd_FRAME_SETUP:
            return has("fails FRAME_SETUP") ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
        case PF_Cmd_RENDER:
            if (has("updates during a render")) updateLabel(in, params);
            return render(in, out, params, output);
        case PF_Cmd_USER_CHANGED_PARAM:
            return press(in, out, params, static_cast<PF_UserChangedParamExtra*>(extra));
        case PF_Cmd_UPDATE_PARAMS_UI:
            updateLabel(in, params);
            return PF_Err_NONE;
        case PF_Cmd_DO_DIALOG:
            if (has("changes a text behind its pointer")) std::strcpy(changingText, "other");
            return PF_Err_NONE;
        case PF_Cmd_ARBITRARY_CALLBACK:
            return arbitraryCallback(in, *static_cast<PF_ArbParamsExtra*>(extra));
        default:
            return PF_Err_NONE;
    }
}

ROGUE_EXPORT A_Err PluginDataEntryFunction2(PF_PluginDataPtr data, PF_PluginDataCB2 callback,
                                            SPBasicSuite*, const char* hostName, const char*) {
    const auto text = [](const char* bytes) { return reinterpret_cast<const A_u_char*>(bytes); };
    fault = hostName;
    const char* entry = has("names no entry point") ? "" : "RogueMain";
    if (has("registers nothing")) return A_Err_NONE;
    const int times = has("registers twice") ? 2 : 1;
    A_Err error = A_Err_NONE;
    for (int i = 0; i < times; ++i) {
        error = callback(data, text("Rogue"), text("TEST Rogue"), text("Test"), text(entry),
                         0x65464B54, 13, 29, 8,
                         has("registers a null text") ? nullptr : text("https://example.org"));
    }
    return error;
}
