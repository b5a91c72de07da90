// PF_Cmd_RENDER: one frame on the CPU.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// Reads the input world params[0], the Amount params[1] and the LUT params[2], and writes `output`:
// the input graded, copied (no LUT, a LUT that does not decode, or Amount 0) or replaced by the
// calibration pattern. In Premiere Pro the output world's pixel format decides between 8-bit and
// float BGRA; any other one gives PF_Err_UNRECOGNIZED_PARAM_TYPE with the output untouched. Other
// hosts give 8-bit ARGB. Leaves one log line for each change of format, size, LUT or Amount.
//
// Threads: any, several at once; one lock, around the comparison and the log line. May throw what
// strings, vectors and the decoder throw, with the LUT's handle unlocked.
PF_Err Render(const PF_InData& host, PF_ParamDef* const* params, PF_LayerDef& output);

}  // namespace tw_effect
