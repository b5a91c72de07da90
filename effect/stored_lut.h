// The LUT that an effect instance holds.
#pragma once

#include <memory>
#include <string>

#include "effect/effect_interface.h"
#include "native/src/lut_engine.h"

namespace tw_effect {

// The decoded contents of the LUT parameter, params[2]; null for "no LUT". `report`, when given, is
// called with the words of a failure, as tw::embeddedLut gives them, before the handle is unlocked.
// Threads: those of the command. Throws what tw::embeddedLut and `report` throw, with the handle
// unlocked.
std::shared_ptr<const tw::Lut3D> storedLut(const PF_InData& host, PF_ParamDef* const* params,
                                           void (*report)(const std::string& failure) = nullptr);

}  // namespace tw_effect
