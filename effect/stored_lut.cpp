#include "effect/stored_lut.h"

#include "effect/host_handle.h"
#include "effect/params.h"
#include "native/src/lut_cache.h"

namespace tw_effect {

std::shared_ptr<const tw::Lut3D> storedLut(const PF_InData& host, PF_ParamDef* const* params,
                                           std::string* failure) {
    const PF_Handle handle = params[kParamLut]->u.arb_d.value;
    if (!handle) return nullptr;
    const LockedHandle locked(host, handle);
    return tw::embeddedLut(locked.data(), locked.size(), failure);
}

}  // namespace tw_effect
