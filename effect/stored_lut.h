// The LUT that an effect instance holds.
#pragma once

#include <memory>
#include <string>

#include "effect/host.h"
#include "native/src/lut_engine.h"

namespace tw_effect {

// The decoded contents of the LUT parameter, params[2]; null for "no LUT", as tw::embeddedLut says,
// which also tells what *failure (when given) receives. The handle is locked while its bytes are
// read and no longer. Threads: those of the command. Throws what tw::embeddedLut throws, with the
// handle unlocked.
std::shared_ptr<const tw::Lut3D> storedLut(const PF_InData& host, PF_ParamDef* const* params,
                                           std::string* failure);

}  // namespace tw_effect
