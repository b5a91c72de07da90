// The effect's parameters and their declaration to the host.
#pragma once

#include "effect/effect_interface.h"

namespace tw_effect {

// Places in the host's parameter array.
enum ParamIndex : A_long {
    kParamInput = 0,  // the input layer, which the host supplies
    kParamAmount,     // percent, 0 to 100
    kParamLut,        // the TWLUT text
    kParamLutButton,
    kParamEditButton,
    kParamCount
};

// Told from "LUT", the data's name, by its trailing blank. Projects know both names.
inline constexpr char kLutButtonName[] = "LUT ";

// Identities of the parameters in saved projects; they must never change. 1, 3 and 6 are free and
// stay so.
enum ParamId : A_long { kIdAmount = 2, kIdLut = 4, kIdLutButton = 5, kIdEditButton = 7 };

// PF_Cmd_PARAMS_SETUP: declares the four parameters in order. The first refusal of the host ends it
// and is returned; num_params is then not set. Threads: the host's main thread. May throw what
// strings and vectors throw.
PF_Err ParamsSetup(const PF_InData& host, PF_OutData& out);

}  // namespace tw_effect
