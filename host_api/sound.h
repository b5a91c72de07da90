// Audio records embedded in PF_InData and PF_OutData; this system uses none of their fields.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 8)

typedef A_short PF_SoundFormat;
typedef A_short PF_SoundSampleSize;
typedef A_short PF_SoundChannels;

struct PF_SoundFormatInfo {
    PF_FpLong rateF;
    PF_SoundChannels num_channels;
    PF_SoundFormat format;
    PF_SoundSampleSize sample_size;
};
static_assert(sizeof(PF_SoundFormatInfo) == 16 && alignof(PF_SoundFormatInfo) == 8);

struct PF_SoundWorld {
    PF_SoundFormatInfo fi;
    A_long num_samples;
    void* dataP;
};
static_assert(sizeof(PF_SoundWorld) == 32 && alignof(PF_SoundWorld) == 8);

#pragma pack(pop)
