// Commands that a host sends to an effect's command entry point.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 8)

typedef A_long PF_Cmd;

enum : PF_Cmd {
    PF_Cmd_ABOUT = 0,
    // Main thread, before anything else. Premiere Pro may leave it out of a session and use what an
    // earlier one answered.
    PF_Cmd_GLOBAL_SETUP = 1,
    // Main thread, last.
    PF_Cmd_GLOBAL_SETDOWN = 3,
    // Once, after GLOBAL_SETUP; the only command in which parameters may be added.
    PF_Cmd_PARAMS_SETUP = 4,
    PF_Cmd_SEQUENCE_SETUP = 5,
    PF_Cmd_SEQUENCE_RESETUP = 6,
    PF_Cmd_SEQUENCE_FLATTEN = 7,
    PF_Cmd_SEQUENCE_SETDOWN = 8,
    PF_Cmd_DO_DIALOG = 9,
    PF_Cmd_FRAME_SETUP = 10,
    // Any thread, also several at once where threaded rendering was declared.
    PF_Cmd_RENDER = 11,
    PF_Cmd_FRAME_SETDOWN = 12,
    // extra: PF_UserChangedParamExtra. The only command here in which parameter values may change.
    PF_Cmd_USER_CHANGED_PARAM = 13,
    // Only the appearance of parameters may change.
    PF_Cmd_UPDATE_PARAMS_UI = 14,
    PF_Cmd_EVENT = 15,
    // extra: PF_ArbParamsExtra. Any thread, also in the middle of another command.
    PF_Cmd_ARBITRARY_CALLBACK = 22,
    PF_Cmd_SMART_PRE_RENDER = 23,
    PF_Cmd_SMART_RENDER = 24
};

// extra of PF_Cmd_USER_CHANGED_PARAM.
struct PF_UserChangedParamExtra {
    PF_ParamIndex param_index;  // index into params, the input layer being 0
};
static_assert(sizeof(PF_UserChangedParamExtra) == 4 && alignof(PF_UserChangedParamExtra) == 4);

#pragma pack(pop)
