#include "effect/global.h"

#include <cstdio>

#include "effect/identity.h"
#include "effect/suite.h"
#include "native/src/log.h"

namespace tw_effect {
namespace {

void declarePixelFormats(const PF_InData& host) {
    const PixelFormats suite(host.pica_basicP);
    if (!suite) {
        tw::logLine("GlobalSetup: no pixel format suite");
        return;
    }
    suite->ClearSupportedPixelFormats(host.effect_ref);
    // Float first: the host prefers formats in the order they are added.
    suite->AddSupportedPixelFormat(host.effect_ref, PrPixelFormat_BGRA_4444_32f);
    suite->AddSupportedPixelFormat(host.effect_ref, PrPixelFormat_BGRA_4444_8u);
}

// A character of a four-character code, 0 being the first.
int codeCharacter(A_long code, int index) {
    return static_cast<unsigned char>(static_cast<A_u_long>(code) >> (24 - 8 * index));
}

}  // namespace

PF_Err About(PF_OutData& out) {
    std::snprintf(out.return_msg, sizeof out.return_msg,
                  "%s %d.%d\rApplies the colour match made in the Tintwell panel.", kEffectName,
                  kVersionMajor, kVersionMinor);
    return PF_Err_NONE;
}

PF_Err GlobalSetup(const PF_InData& host, PF_OutData& out) {
    const A_long appl = host.appl_id;
    tw::logLine("GlobalSetup build %d host=%c%c%c%c api=%d.%d", kBuild, codeCharacter(appl, 0),
                codeCharacter(appl, 1), codeCharacter(appl, 2), codeCharacter(appl, 3),
                host.version.major, host.version.minor);
    out.my_version = kPackedVersion;
    out.out_flags = kOutFlags;
    out.out_flags2 = kOutFlags2;
    if (appl == kPremiere) declarePixelFormats(host);
    return PF_Err_NONE;
}

}  // namespace tw_effect
