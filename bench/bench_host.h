// As much of a host as one render needs, and nothing that takes time.
#pragma once

#include <string>
#include <vector>

#include "effect/effect_interface.h"
#include "effect/params.h"
#include "native/src/lut_engine.h"

namespace bench {

// Memory of the host that holds `bytes`; stays as it is while locked.
class Handle {
public:
    explicit Handle(const std::string& bytes) : bytes_(bytes.begin(), bytes.end()) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    PF_Handle handle() { return reinterpret_cast<PF_Handle>(this); }
    std::vector<char> bytes_;
};

// Sends PF_Cmd_RENDER to the effect as After Effects (8 bits) and Premiere Pro (floats) do.
class RenderCall {
public:
    RenderCall(const tw::Image8& input, const tw::Image8& output);
    RenderCall(const tw::ImageF& input, const tw::ImageF& output);
    RenderCall(const RenderCall&) = delete;
    RenderCall& operator=(const RenderCall&) = delete;

    // With the LUT in that handle and an Amount of 80. False when the effect reports an error.
    bool render(Handle& lut);

private:
    RenderCall();

    SPBasicSuite basic_ = {};
    PF_UtilCallbacks callbacks_ = {};
    PF_InData host_ = {};
    PF_ParamDef defs_[tw_effect::kParamCount] = {};
    PF_ParamDef* params_[tw_effect::kParamCount];
    PF_LayerDef output_ = {};
};

}  // namespace bench
