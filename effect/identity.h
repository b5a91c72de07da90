// Who the effect is: what hosts and saved projects know it by. Projects hold the match name; it
// must never change.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

inline constexpr char kEffectName[] = "Tintwell";
inline constexpr char kMatchName[] = "TNWL Tintwell";
inline constexpr char kCategory[] = "Color Correction";
inline constexpr char kEntryPoint[] = "EffectMain";
inline constexpr char kSupportUrl[] = "https://tintwell.example/support";

// Given by the build, where the project's version is written.
inline constexpr int kVersionMajor = TINTWELL_VERSION_MAJOR;
inline constexpr int kVersionMinor = TINTWELL_VERSION_MINOR;
inline constexpr int kBuild = 11;

// Major version from bit 19, minor from bit 15, build in the low nine bits; bug-fix and stage (in
// development) are 0.
inline constexpr A_u_long kPackedVersion = kVersionMajor << 19 | kVersionMinor << 15 | kBuild;
static_assert(kPackedVersion == 0x8000B);

// Each pixel depends on itself alone, and the LUT button's label follows the stored LUT. No
// deep-colour flag: After Effects hands over 8 bits, Premiere Pro negotiates its formats instead.
inline constexpr A_long kOutFlags = PF_OutFlag_PIX_INDEPENDENT | PF_OutFlag_SEND_UPDATE_PARAMS_UI;
static_assert(kOutFlags == 0x4000400);

inline constexpr A_long kOutFlags2 = PF_OutFlag2_SUPPORTS_THREADED_RENDERING;
static_assert(kOutFlags2 == 0x8000000);

// What in_data->appl_id holds in Premiere Pro, 'PrMr'; every other host is treated as After
// Effects.
inline constexpr A_long kPremiere = 0x50724D72;

}  // namespace tw_effect
