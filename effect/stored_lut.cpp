#include "effect/stored_lut.h"

#include "effect/host_handle.h"
#include "effect/params.h"
#include "native/src/lut_cache.h"

namespace tw_effect {

std::shared_ptr<const tw::Lut3D> storedLut(const PF_InData& host, PF_ParamDef* const* params,
                                           void (*report)(const std::string& failure)) {
    const PF_Handle handle = params[kParamLut]->u.arb_d.value;
    if (!handle) return nullptr;
    const LockedHandle locked(host, handle);
    std::string failure;
    auto lut = tw::embeddedLut(locked.data(), locked.size(), report ? &failure : nullptr);
    if (!lut && !failure.empty()) report(failure);
    return lut;
}

}  // namespace tw_effect
