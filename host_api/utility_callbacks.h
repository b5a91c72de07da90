// The host's utility table, of which only the handle callbacks are used.
#pragma once

#include "host_api/types.h"

#pragma pack(push, 8)

struct PF_ANSICallbacks {
    UnusedCallback atan;
    UnusedCallback atan2;
    UnusedCallback ceil;
    UnusedCallback cos;
    UnusedCallback exp;
    UnusedCallback fabs;
    UnusedCallback floor;
    UnusedCallback fmod;
    UnusedCallback hypot;
    UnusedCallback log;
    UnusedCallback log10;
    UnusedCallback pow;
    UnusedCallback sin;
    UnusedCallback sqrt;
    UnusedCallback tan;
    UnusedCallback sprintf;
    UnusedCallback strcpy;
    UnusedCallback asin;
    UnusedCallback acos;
    A_long ansi_procs[1];
};
static_assert(sizeof(PF_ANSICallbacks) == 160 && alignof(PF_ANSICallbacks) == 8);

struct PF_ColorCallbacks {
    UnusedCallback RGBtoHLS;
    UnusedCallback HLStoRGB;
    UnusedCallback RGBtoYIQ;
    UnusedCallback YIQtoRGB;
    UnusedCallback Luminance;
    UnusedCallback Hue;
    UnusedCallback Lightness;
    UnusedCallback Saturation;
};
static_assert(sizeof(PF_ColorCallbacks) == 64 && alignof(PF_ColorCallbacks) == 8);

// The handle callbacks may be called in any command and from any thread. They take no context.
struct _PF_UtilCallbacks {
    UnusedCallback begin_sampling;
    UnusedCallback subpixel_sample;
    UnusedCallback area_sample;
    void* get_batch_func_is_deprecated;
    UnusedCallback end_sampling;
    UnusedCallback composite_rect;
    UnusedCallback blend;
    UnusedCallback convolve;
    UnusedCallback copy;
    UnusedCallback fill;
    UnusedCallback gaussian_kernel;
    UnusedCallback iterate;
    UnusedCallback premultiply;
    UnusedCallback premultiply_color;
    UnusedCallback new_world;
    UnusedCallback dispose_world;
    UnusedCallback iterate_origin;
    UnusedCallback iterate_lut;
    UnusedCallback transfer_rect;
    UnusedCallback transform_world;
    // A new handle of `size` bytes, unlocked, contents undefined; null without memory.
    PF_Handle (*host_new_handle)(A_u_longlong size);
    // The block, in place until the matching unlock; null when refused. Locks are counted.
    void* (*host_lock_handle)(PF_Handle pf_handle);
    // Also legal after a lock that gave null.
    void (*host_unlock_handle)(PF_Handle pf_handle);
    // The caller must hold no lock on it.
    void (*host_dispose_handle)(PF_Handle pf_handle);
    UnusedCallback get_callback_addr;
    UnusedCallback app;
    PF_ANSICallbacks ansi;
    PF_ColorCallbacks colorCB;
    UnusedCallback get_platform_data;
    A_u_longlong (*host_get_handle_size)(PF_Handle pf_handle);
    UnusedCallback iterate_origin_non_clip_src;
    UnusedCallback iterate_generic;
    // Keeps the common contents. May move the block, so the caller must hold no lock; may also put
    // another handle into *handlePH, the old one being gone. On an error everything stays.
    PF_Err (*host_resize_handle)(A_u_longlong new_sizeL, PF_Handle* handlePH);
    UnusedCallback subpixel_sample16;
    UnusedCallback area_sample16;
    UnusedCallback fill16;
    UnusedCallback premultiply_color16;
    UnusedCallback iterate16;
    UnusedCallback iterate_origin16;
    UnusedCallback iterate_origin_non_clip_src16;
    UnusedCallback get_pixel_data8;
    UnusedCallback get_pixel_data16;
    A_long reserved[1];
};
static_assert(sizeof(_PF_UtilCallbacks) == 552 && alignof(_PF_UtilCallbacks) == 8);
typedef _PF_UtilCallbacks PF_UtilCallbacks;

#pragma pack(pop)
