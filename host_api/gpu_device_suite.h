// "MediaCore GPU Device Suite" version 2.
#pragma once

#include "host_api/pixel_formats.h"
#include "host_api/premiere_types.h"

#pragma pack(push, 1)

#define kPrSDKGPUDeviceSuite "MediaCore GPU Device Suite"
constexpr csSDK_int32 kPrSDKGPUDeviceSuiteVersion = 2;

enum PrGPUDeviceFramework : csSDK_uint32 {
    PrGPUDeviceFramework_CUDA = 0,
    PrGPUDeviceFramework_OpenCL = 1,
    PrGPUDeviceFramework_Metal = 2,
    PrGPUDeviceFramework_DirectX = 3
};

// The handles are the host's. With Metal: outDeviceHandle an id<MTLDevice>, outCommandQueueHandle
// an id<MTLCommandQueue>.
struct PrGPUDeviceInfo {
    PrGPUDeviceFramework outDeviceFramework;
    prBool outMeetsMinimumRequirementsForAcceleration;
    void* outPlatformHandle;
    void* outDeviceHandle;
    void* outContextHandle;
    void* outCommandQueueHandle;
    void* outOffscreenOpenGLContextHandle;
    void* outOffscreenOpenGLDeviceHandle;
};
static_assert(sizeof(PrGPUDeviceInfo) == 56 && alignof(PrGPUDeviceInfo) == 1);

struct PrSDKGPUDeviceSuite {
    prSuiteError (*GetDeviceCount)(csSDK_uint32* outDeviceCount);
    // inSuiteVersion: 2, the version of the record.
    prSuiteError (*GetDeviceInfo)(csSDK_uint32 inSuiteVersion, csSDK_uint32 inDeviceIndex,
                                  PrGPUDeviceInfo* outDeviceInfo);
    UnusedCallback AcquireExclusiveDeviceAccess;
    UnusedCallback ReleaseExclusiveDeviceAccess;
    UnusedCallback AllocateDeviceMemory;
    UnusedCallback FreeDeviceMemory;
    UnusedCallback PurgeDeviceMemory;
    UnusedCallback AllocateHostMemory;
    UnusedCallback FreeHostMemory;
    UnusedCallback PurgeHostMemory;
    UnusedCallback CreateGPUPPix;
    // The frame's memory on the device; with Metal an id<MTLBuffer>, not to be released.
    prSuiteError (*GetGPUPPixData)(PPixHand inPPixHand, void** outData);
    UnusedCallback GetGPUPPixDeviceIndex;
    UnusedCallback GetGPUPPixSize;
};
static_assert(sizeof(PrSDKGPUDeviceSuite) == 112 && alignof(PrSDKGPUDeviceSuite) == 1);

#pragma pack(pop)
