// Pixels and pictures ("worlds") as the host hands them to an effect.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 8)

typedef A_long PF_WorldFlags;

enum : PF_WorldFlags { PF_WorldFlag_DEEP = 1, PF_WorldFlag_WRITEABLE = 2 };

// One pixel of After Effects' 8-bit worlds, in memory order.
struct PF_Pixel {
    A_u_char alpha;
    A_u_char red;
    A_u_char green;
    A_u_char blue;
};
static_assert(sizeof(PF_Pixel) == 4 && alignof(PF_Pixel) == 1);
typedef PF_Pixel* PF_PixelPtr;

// A picture, or a rectangle cut out of a larger one. The host owns the pixels; they are valid for
// the command. Row y starts at data + y * rowbytes bytes; what lies between a row's last pixel and
// the next row belongs to the host and is never written. A world need not be aligned to more than
// one channel.
struct PF_LayerDef {
    void* reserved0;
    void* reserved1;
    PF_WorldFlags world_flags;
    // First pixel of the top row. What a pixel is depends on the format: see PF_PixelFormatSuite.
    // Null in commands that carry no picture.
    PF_PixelPtr data;
    // Bytes from one row's start to the next one's; signed, and different for input and output even
    // at equal widths.
    A_long rowbytes;
    A_long width;                  // pixels
    A_long height;                 // rows
    PF_UnionableRect extent_hint;  // not kept by Premiere Pro
    void* platform_ref;
    A_long reserved_long1;
    void* reserved_long4;
    PF_RationalScale pix_aspect_ratio;
    void* reserved_long2;
    A_long origin_x;
    A_long origin_y;
    A_long reserved_long3;
    A_long dephault;
};
static_assert(sizeof(PF_LayerDef) == 120 && alignof(PF_LayerDef) == 8);
typedef PF_LayerDef PF_EffectWorld;

#pragma pack(pop)
