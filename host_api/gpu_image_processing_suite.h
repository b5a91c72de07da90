// "MediaCore GPU Image Processing Suite" version 1. Acquired, not called.
#pragma once

#include "host_api/premiere_types.h"

#pragma pack(push, 1)

#define kPrSDKGPUImageProcessingSuite "MediaCore GPU Image Processing Suite"
constexpr csSDK_int32 kPrSDKGPUImageProcessingSuiteVersion = 1;

struct PrSDKGPUImageProcessingSuite {
    UnusedCallback PixelFormatConvert;
    UnusedCallback Scale;
    UnusedCallback GaussianBlur;
};
static_assert(sizeof(PrSDKGPUImageProcessingSuite) == 24 &&
              alignof(PrSDKGPUImageProcessingSuite) == 1);

#pragma pack(pop)
