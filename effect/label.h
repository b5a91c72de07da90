// The LUT button's face: which LUT the effect holds.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// Labels the LUT button, params[3], after the LUT that params[2] holds, through a copy of its
// definition. The label's text is kept for the life of the process, as the host keeps its address.
// Without the host's parameter suite the old label stays. Failures are only logged; `reason` is one
// word saying why, for the log, which gets one line for each change of reason, label or result.
//
// Threads: the host's command thread; several at once are safe. Two locks, never both: the kept
// labels', and the last log line's with the log's own under it. The host is called under neither.
// May throw what strings and the decoder throw.
void ShowLutName(const PF_InData& host, PF_ParamDef* const* params, const char* reason);

}  // namespace tw_effect
