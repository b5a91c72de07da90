// Premiere Pro's GPU filters: what a module fills in, and what it is called with.
#pragma once

#include "host_api/pixel_formats.h"
#include "host_api/premiere_suites.h"
#include "host_api/premiere_types.h"

#pragma pack(push, 1)

constexpr csSDK_uint32 PrSDKGPUFilterInterfaceVersion2 = 2;

struct PrGPUFilterInfo {
    csSDK_uint32 outInterfaceVersion;
    // Match name of the effect that the filter belongs to; none: the module's own.
    PrSDKString outMatchName;
};
static_assert(sizeof(PrGPUFilterInfo) == 20 && alignof(PrGPUFilterInfo) == 1);

// Made by the host for one effect on one device with one state of its parameters.
struct PrGPUFilterInstance {
    struct piSuites* piSuites;
    csSDK_uint32 inDeviceIndex;
    PrTimelineID inTimelineID;
    csSDK_int32 inNodeID;       // for the video segment suite
    void* ioPrivatePluginData;  // the filter's; null at first
    prBool outIsRealtime;
};
static_assert(sizeof(PrGPUFilterInstance) == 32 && alignof(PrGPUFilterInstance) == 1);

struct PrGPUFilterRenderParams {
    PrTime inClipTime;
    PrTime inSequenceTime;
    PrRenderQuality inQuality;
    float inDownsampleFactorX;
    float inDownsampleFactorY;
    csSDK_uint32 inRenderWidth;
    csSDK_uint32 inRenderHeight;
    csSDK_uint32 inRenderPARNum;
    csSDK_uint32 inRenderPARDen;
    prFieldType inRenderFieldType;
    PrTime inRenderTicksPerFrame;
    pmFieldDisplay inRenderField;
};
static_assert(sizeof(PrGPUFilterRenderParams) == 60 && alignof(PrGPUFilterRenderParams) == 1);

enum PrGPUFilterFrameDependencyType : csSDK_uint32 { PrGPUDependency_InputFrame = 1 };

struct PrGPUFilterFrameDependency {
    PrGPUFilterFrameDependencyType outDependencyType;
    csSDK_int32 outTrackID;
    PrTime outSequenceTime;
    PrPixelFormat outPrecomputePixelFormat;
    csSDK_uint32 outPrecomputeFrameWidth;
    csSDK_uint32 outPrecomputeFrameHeight;
    csSDK_uint32 outPrecomputeFramePARNumerator;
    csSDK_uint32 outPrecomputeFramePARDenominator;
    prFieldType outPrecomputeFrameFieldType;
    csSDK_size_t outPrecomputeCustomDataSize;
    prBool outNeedsFieldSeparation;
    prBool outReadIncomingTransition;
};
static_assert(sizeof(PrGPUFilterFrameDependency) == 56 && alignof(PrGPUFilterFrameDependency) == 1);

// The filter's callbacks. The host may be in several of them at once, for different instances.
struct PrGPUFilter {
    // Failure: this effect renders on the CPU; there is no DisposeInstance then.
    prSuiteError (*CreateInstance)(PrGPUFilterInstance* ioInstanceData);
    prSuiteError (*DisposeInstance)(PrGPUFilterInstance* ioInstanceData);
    // These two may be answered with suiteError_NotImplemented.
    prSuiteError (*GetFrameDependencies)(PrGPUFilterInstance* inInstanceData,
                                         const PrGPUFilterRenderParams* inRenderParams,
                                         csSDK_int32* ioQueryIndex,
                                         PrGPUFilterFrameDependency* outFrameDependencies);
    prSuiteError (*Precompute)(PrGPUFilterInstance* inInstanceData,
                               const PrGPUFilterRenderParams* inRenderParams, csSDK_int32 inIndex,
                               PPixHand inFrame);
    // inFrames[0]: the picture. *outFrame: where the result goes, which may be the same frame.
    prSuiteError (*Render)(PrGPUFilterInstance* inInstanceData,
                           const PrGPUFilterRenderParams* inRenderParams, const PPixHand* inFrames,
                           csSDK_size_t inFrameCount, PPixHand* outFrame);
};
static_assert(sizeof(PrGPUFilter) == 40 && alignof(PrGPUFilter) == 1);

// The module's exported function "xGPUFilterEntry". inStartup 0: shutting down, the records are not
// to be filled. *ioIndex is the filter that is asked for; a module that leaves it higher is asked
// again.
typedef prSuiteError (*PrGPUFilterEntry)(csSDK_uint32 inHostInterfaceVersion, csSDK_int32* ioIndex,
                                         prBool inStartup, piSuitesPtr piSuites,
                                         PrGPUFilter* outFilter, PrGPUFilterInfo* outFilterInfo);

#pragma pack(pop)
