// What the host calls: its only ways into the CPU side of the module.
#pragma once

#include "effect/effect_interface.h"
#include "native/src/export.h"

extern "C" {

// Called once: makes exactly one call of the registration callback, with the effect's identity, and
// returns its result.
TW_EXPORT A_Err PluginDataEntryFunction2(PF_PluginDataPtr registration, PF_PluginDataCB2 callback,
                                         SPBasicSuite* basic, const char* hostName,
                                         const char* hostVersion);

// Every effect command. Returns the command's error code; an exception inside the effect ends as
// PF_Err_INTERNAL_STRUCT_DAMAGED. Threads: any, several at once, as the host's rules allow.
TW_EXPORT PF_Err EffectMain(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                            PF_ParamDef** params, PF_LayerDef* output, void* extra);
}
