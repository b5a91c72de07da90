// The hosts' effect interface: the one place that decides where its declarations come from, either
// our own in host_api/ or, with TINTWELL_HOST_SDK set, the hosts' own SDK headers. Both publish the
// same names; where they do not, the difference is bridged here.
#pragma once

#include <cstddef>

#ifdef TINTWELL_HOST_SDK
#include <AE_Effect.h>
#include <AE_EffectCB.h>
#include <AE_EffectCBSuites.h>
#include <AE_EffectSuites.h>
#include <PrSDKAESupport.h>
#include <SPBasic.h>
#else
#include "host_api/host_api.h"
#endif

namespace tw_effect {

inline constexpr std::size_t kParamNameBytes = 32;

// The name field of a parameter definition, 32 bytes with the terminator. Reached by its place,
// right before the value union's flags, because newer SDKs call the field otherwise.
inline char* paramName(PF_ParamDef& def) {
    constexpr std::size_t offset = offsetof(PF_ParamDef, flags) - kParamNameBytes;
    static_assert(offset == 16);
    return reinterpret_cast<char*>(&def) + offset;
}

}  // namespace tw_effect
