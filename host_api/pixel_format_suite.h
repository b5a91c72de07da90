// "PF Pixel Format Suite" version 1, which only Premiere Pro has. After Effects offers a suite of
// the same name with another shape as version 2.
#pragma once

#include "host_api/pixel_formats.h"
#include "host_api/types.h"
#include "host_api/world.h"

#pragma pack(push, 8)

#define kPFPixelFormatSuite "PF Pixel Format Suite"
constexpr A_long kPFPixelFormatSuiteVersion1 = 1;

struct PF_PixelFormatSuite {
    // Only in PF_Cmd_GLOBAL_SETUP, in order of preference. 8-bit ARGB always stands last and need
    // not be added.
    PF_Err (*AddSupportedPixelFormat)(PF_ProgPtr effect_ref, PrPixelFormat pixelFormat);
    PF_Err (*ClearSupportedPixelFormats)(PF_ProgPtr effect_ref);
    UnusedCallback NewWorldOfPixelFormat;  // not implemented by the host
    UnusedCallback DisposeWorld;           // not implemented by the host
    // The format of a world that came with the current command.
    PF_Err (*GetPixelFormat)(PF_EffectWorld* inWorld, PrPixelFormat* pixelFormat);
    UnusedCallback GetBlackForPixelFormat;
    UnusedCallback GetWhiteForPixelFormat;
    UnusedCallback ConvertColorToPixelFormattedData;
};
static_assert(sizeof(PF_PixelFormatSuite) == 64 && alignof(PF_PixelFormatSuite) == 8);
typedef PF_PixelFormatSuite PF_PixelFormatSuite1;

#pragma pack(pop)
