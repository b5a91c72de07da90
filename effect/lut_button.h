// The LUT button: the user picks a .cube file, which moves into the effect.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// PF_Cmd_USER_CHANGED_PARAM of params[3]. Stores the text of the file that the user picks in the
// LUT parameter, params[2]: the host's handle there is resized, or a new one handed over; the
// change flag is set, REFRESH_UI and FORCE_RERENDER are added to out_flags, and the button is
// labelled. PF_Err_OUT_OF_MEMORY when the host gives no memory for it. A cancelled dialog, and a
// file that is refused with an alert, are no error. Unless it stored a LUT it has changed nothing.
//
// Threads: the host's UI thread, which waits for the dialogs; no lock is held meanwhile. Needs a
// little over 64 KiB of stack. May throw what strings, vectors and the parser throw.
PF_Err PressLutButton(const PF_InData& host, PF_ParamDef* const* params, PF_OutData& out);

}  // namespace tw_effect
