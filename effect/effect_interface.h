// The hosts' effect interface: the one place that decides where its declarations come from, either
// our own in host_api/ or, with TINTWELL_HOST_SDK set, the hosts' own SDK headers. Both publish the
// same names; where they do not, the difference is bridged here.
#pragma once

#include <cstddef>
#include <cstdio>

#ifdef TINTWELL_HOST_SDK
// Each for the names that it declares itself. SPBasic.h goes first: PrSDKAESupport.h counts on it.
// clang-format off
#include <SPBasic.h>
#include <A.h>
#include <AE_Effect.h>
#include <AE_EffectCB.h>
#include <AE_EffectCBSuites.h>
#include <AE_EffectPixelFormat.h>
#include <AE_EffectSuites.h>
#include <AE_PluginData.h>
#include <Param_Utils.h>
#include <PrSDKAESupport.h>
// clang-format on
#else
#include "host_api/host_api.h"
#endif

namespace tw_effect {

// Sets a parameter definition's name, cut at 31 bytes. The field is reached by its place, since
// newer SDKs call it otherwise.
inline void setName(PF_ParamDef& def, const char* name) {
    constexpr std::size_t kPlace = 16;
    constexpr std::size_t kBytes = 32;
    static_assert(offsetof(PF_ParamDef, flags) == kPlace + kBytes);
    std::snprintf(reinterpret_cast<char*>(&def) + kPlace, kBytes, "%s", name);
}

}  // namespace tw_effect
