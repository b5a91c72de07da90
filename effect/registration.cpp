#include "effect/entry_points.h"
#include "effect/identity.h"

namespace {

constexpr A_long kKindEffect = 0x65464B54;  // 'eFKT'
// The interface the effect was written for, whatever headers it is built with.
constexpr A_long kApiMajor = 13;
constexpr A_long kApiMinor = 29;
constexpr A_long kReservedInfo = 8;

const A_u_char* hostText(const char* text) {
    return reinterpret_cast<const A_u_char*>(text);
}

}  // namespace

A_Err PluginDataEntryFunction2(PF_PluginDataPtr registration, PF_PluginDataCB2 callback,
                               SPBasicSuite* /*basic*/, const char* /*hostName*/,
                               const char* /*hostVersion*/) {
    using namespace tw_effect;
    return callback(registration, hostText(kEffectName), hostText(kMatchName), hostText(kCategory),
                    hostText(kEntryPoint), kKindEffect, kApiMajor, kApiMinor, kReservedInfo,
                    hostText(kSupportUrl));
}
