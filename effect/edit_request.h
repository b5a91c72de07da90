// The Edit LUT button: asks the companion panel to reopen the match that a LUT came from.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// PF_Cmd_USER_CHANGED_PARAM of params[4]. Writes the request for the LUT in params[2] into
// "edit-request.json" in the data folder, in the place of an older one; a folder that is missing is
// not made, and the request is then lost without a word to the user. A LUT without a match id, or
// no LUT, gives an alert instead. Changes no parameter and no flag; always PF_Err_NONE.
//
// Threads: the host's UI thread, which waits for the alert; no lock is held. May throw what strings
// and the decoder throw.
PF_Err RequestEdit(const PF_InData& host, PF_ParamDef* const* params);

}  // namespace tw_effect
