// Pixel formats that Premiere Pro names: four-character codes, first character in the low byte.
#pragma once

#include "host_api/types.h"

enum PrPixelFormat : A_u_long {
    PrPixelFormat_Any = 0,
    PrPixelFormat_BGRA_4444_8u = 0x61726762,       // 'bgra'
    PrPixelFormat_ARGB_4444_8u = 0x62677261,       // 'argb': what every effect must take
    PrPixelFormat_BGRA_4444_16u = 0x61726742,      // 'Bgra'
    PrPixelFormat_BGRA_4444_32f = 0x61724742,      // 'BGra'
    PrPixelFormat_GPU_BGRA_4444_32f = 0x41444340,  // '@CDA', on a GPU
    PrPixelFormat_GPU_BGRA_4444_16f = 0x61444340,  // '@CDa', on a GPU, half floats
    PrPixelFormat_Invalid = 0x66646162             // 'badf'
};
