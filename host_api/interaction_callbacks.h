// Callbacks embedded in PF_InData.
#pragma once

#include "host_api/parameters.h"
#include "host_api/types.h"

#pragma pack(push, 8)

struct PF_InteractCallbacks {
    UnusedCallback checkout_param;
    UnusedCallback checkin_param;
    // Appends a parameter (index -1) and takes ownership of an arbitrary default. Only in
    // PF_Cmd_PARAMS_SETUP. The definition may be reused after the call: the host has copied it and
    // its texts.
    PF_Err (*add_param)(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDefPtr def);
    UnusedCallback abort;
    UnusedCallback progress;
    UnusedCallback register_ui;
    UnusedCallback checkout_layer_audio;
    UnusedCallback checkin_layer_audio;
    UnusedCallback get_audio_data;
    void* reserved_str[3];
    void* reserved[10];
};
static_assert(sizeof(PF_InteractCallbacks) == 176 && alignof(PF_InteractCallbacks) == 8);

#pragma pack(pop)
