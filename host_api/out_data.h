// What an effect answers in a command, beside its error code.
#pragma once

#include "host_api/sound.h"
#include "host_api/types.h"

#pragma pack(push, 8)

enum : PF_OutFlags {
    PF_OutFlag_NONE = 0,
    // Capabilities, set in PF_Cmd_GLOBAL_SETUP.
    PF_OutFlag_PIX_INDEPENDENT = 0x400,
    PF_OutFlag_SEND_UPDATE_PARAMS_UI = 0x4000000,
    // Requests, added in single commands.
    PF_OutFlag_REFRESH_UI = 0x20000,
    PF_OutFlag_FORCE_RERENDER = 0x400000
};

enum : PF_OutFlags2 { PF_OutFlag2_NONE = 0, PF_OutFlag2_SUPPORTS_THREADED_RENDERING = 0x8000000 };

// Stage field of my_version.
enum : A_long { PF_Stage_DEVELOP = 0, PF_Stage_ALPHA = 1, PF_Stage_BETA = 2, PF_Stage_RELEASE = 3 };

// Owned by the host, valid for the command. It arrives fresh, but flags that are set in it are the
// host's and are to be kept: effects add theirs.
struct PF_OutData {
    // Packed word: build in bits 0-8, stage 9-10, bug-fix 11-14, minor 15-18, major from 19.
    A_u_long my_version;
    A_char name[PF_MAX_EFFECT_NAME_LEN + 1];
    PF_Handle global_data;
    A_long num_params;  // set in PF_Cmd_PARAMS_SETUP: the added ones and the input layer
    PF_Handle sequence_data;
    A_long flat_sdata_size;
    PF_Handle frame_data;
    A_long width;
    A_long height;
    PF_Point origin;
    PF_OutFlags out_flags;
    A_char return_msg[PF_MAX_EFFECT_MSG_LEN + 1];  // shown in a box unless empty; terminated
    A_long start_sampL;
    A_long dur_sampL;
    PF_SoundWorld dest_snd;
    PF_OutFlags2 out_flags2;
};
static_assert(sizeof(PF_OutData) == 408 && alignof(PF_OutData) == 8);

#pragma pack(pop)
