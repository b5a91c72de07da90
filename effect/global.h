// The commands that concern the effect as a whole.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// PF_Cmd_ABOUT: the text of the About box into return_msg, always terminated.
PF_Err About(PF_OutData& out);

// PF_Cmd_GLOBAL_SETUP: version and flags, and in Premiere Pro the declared pixel formats. A missing
// pixel format suite is logged and no error. Threads: the host's main thread.
PF_Err GlobalSetup(const PF_InData& host, PF_OutData& out);

}  // namespace tw_effect
