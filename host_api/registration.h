// The two entry points of an effect module on the CPU side, and the callback of the first.
#pragma once

#include "host_api/basic_suite.h"
#include "host_api/commands.h"
#include "host_api/in_data.h"
#include "host_api/out_data.h"
#include "host_api/parameters.h"
#include "host_api/types.h"
#include "host_api/world.h"

extern "C" {

// The module being registered, as the host knows it; passed through.
struct PF_PluginData;
typedef PF_PluginData* PF_PluginDataPtr;

// Registers one effect. The texts are terminated and copied during the call. kind, apiMajor and
// apiMinor: 'eFKT' with the first character in the high byte, and the interface version that the
// effect was written for.
typedef A_Err (*PF_PluginDataCB2)(PF_PluginDataPtr inPtr, const A_u_char* inPluginName,
                                  const A_u_char* inPluginMatchName,
                                  const A_u_char* inPluginCategory,
                                  const A_u_char* inEntryPointName, A_long inPluginKind,
                                  A_long inApiVersionMajor, A_long inApiVersionMinor,
                                  A_long inReservedInfo, const A_u_char* inSupportURL);

// Shape of the exported PluginDataEntryFunction2. Called once per load; its result is the host's
// verdict on the module. basic may be null.
typedef A_Err (*PF_PluginDataEntryFunction2Ptr)(PF_PluginDataPtr inPtr, PF_PluginDataCB2 inCallback,
                                                SPBasicSuite* inBasic, const char* inHostName,
                                                const char* inHostVersion);

// Shape of the command entry point. params holds pointers to definitions, params[0] being the input
// layer, with a null pointer after the last; params and output are null in commands that carry
// none, and extra is the command's own record or null. No exception may leave it.
typedef PF_Err (*PF_FilterProc)(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                PF_ParamList params, PF_LayerDef* output, void* extra);

}  // extern "C"
