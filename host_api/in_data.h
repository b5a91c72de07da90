// What the host tells an effect in every command.
#pragma once

#include "host_api/basic_suite.h"
#include "host_api/interaction_callbacks.h"
#include "host_api/sound.h"
#include "host_api/types.h"
#include "host_api/utility_callbacks.h"

#pragma pack(push, 8)

// Owned by the host, valid for the command, not written by the effect.
struct PF_InData {
    PF_InteractCallbacks inter;
    _PF_UtilCallbacks* utils;  // never null
    PF_ProgPtr effect_ref;     // may be null in PF_Cmd_ARBITRARY_CALLBACK
    PF_Quality quality;
    PF_SpecVersion version;  // the host's interface version, which may be lower than ours
    A_long serial_num;
    A_long appl_id;     // four-character code of the host, first character in the high byte
    A_long num_params;  // with the input layer; 0 before the parameters are known
    A_long reserved;
    A_long what_cpu;
    A_long what_fpu;
    A_long current_time;  // in units of 1 / time_scale seconds, as are the next three
    A_long time_step;
    A_long total_time;
    A_long local_time_step;
    A_u_long time_scale;
    PF_Field field;
    PF_Fixed shutter_angle;
    A_long width;  // of the layer at full resolution
    A_long height;
    PF_Rect extent_hint;
    A_long output_origin_x;
    A_long output_origin_y;
    PF_RationalScale downsample_x;
    PF_RationalScale downsample_y;
    PF_RationalScale pixel_aspect_ratio;
    PF_InFlags in_flags;
    PF_Handle global_data;
    PF_Handle sequence_data;
    PF_Handle frame_data;
    A_long start_sampL;
    A_long dur_sampL;
    A_long total_sampL;
    PF_SoundWorld src_snd;
    SPBasicSuite* pica_basicP;  // null when the host offers no suites
    A_long pre_effect_source_origin_x;
    A_long pre_effect_source_origin_y;
    PF_Fixed shutter_phase;
};
static_assert(sizeof(PF_InData) == 408 && alignof(PF_InData) == 8);

#pragma pack(pop)
