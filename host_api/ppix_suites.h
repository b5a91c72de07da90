// "Premiere PPix Suite" version 1, and "Premiere PPix 2 Suite" version 3, which is acquired but not
// called.
#pragma once

#include "host_api/pixel_formats.h"
#include "host_api/premiere_types.h"

#pragma pack(push, 1)

#define kPrSDKPPixSuite "Premiere PPix Suite"
constexpr csSDK_int32 kPrSDKPPixSuiteVersion = 1;

// For frames on the CPU and on GPUs alike.
struct PrSDKPPixSuite {
    UnusedCallback Dispose;
    UnusedCallback GetPixels;
    prSuiteError (*GetBounds)(PPixHand inPPixHand, prRect* inoutBoundingRect);
    // May be negative.
    prSuiteError (*GetRowBytes)(PPixHand inPPixHand, csSDK_int32* outRowBytes);
    UnusedCallback GetPixelAspectRatio;
    prSuiteError (*GetPixelFormat)(PPixHand inPPixHand, PrPixelFormat* outPixelFormat);
    UnusedCallback GetUniqueKey;
    UnusedCallback GetUniqueKeySize;
    UnusedCallback GetRenderTime;
};
static_assert(sizeof(PrSDKPPixSuite) == 72 && alignof(PrSDKPPixSuite) == 1);

#define kPrSDKPPix2Suite "Premiere PPix 2 Suite"
constexpr csSDK_int32 kPrSDKPPix2SuiteVersion = 3;

struct PrSDKPPix2Suite {
    UnusedCallback GetSize;
    UnusedCallback GetYUV420PlanarBuffers;
    UnusedCallback GetOrigin;
    UnusedCallback GetFieldOrder;
};
static_assert(sizeof(PrSDKPPix2Suite) == 32 && alignof(PrSDKPPix2Suite) == 1);

#pragma pack(pop)
