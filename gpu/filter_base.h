// What every GPU filter instance has: the host's suites and the description of its device.
#pragma once

#include "gpu/gpu_filter_interface.h"

// One object an instance. The suites are never released: the host may still be asked through them
// when other instances live on, and they go with the process.
//
// Threads: one at a time for an object, as the host calls an instance.
class PrGPUFilterBase {
public:
    virtual ~PrGPUFilterBase() = default;

    // Takes over what the instance record says, acquires the suites and asks for the device's
    // description. Returns 0 always; a suite that the host lacks is null afterwards, a
    // description that it refuses is all zero.
    virtual prSuiteError Initialize(PrGPUFilterInstance* instance);

    // Both: suiteError_NotImplemented.
    virtual prSuiteError GetFrameDependencies(const PrGPUFilterRenderParams* params,
                                              csSDK_int32* queryIndex,
                                              PrGPUFilterFrameDependency* dependencies);
    virtual prSuiteError Precompute(const PrGPUFilterRenderParams* params, csSDK_int32 index,
                                    PPixHand frame);

    // frames[0] is the picture; the result goes into **outFrame, which may be the same frame.
    virtual prSuiteError Render(const PrGPUFilterRenderParams* params, const PPixHand* frames,
                                csSDK_size_t frameCount, PPixHand* outFrame) = 0;

protected:
    const PrSDKGPUDeviceSuite* gpuDevice_ = nullptr;
    const PrSDKGPUImageProcessingSuite* imageProcessing_ = nullptr;
    const PrSDKMemoryManagerSuite* memory_ = nullptr;
    const PrSDKPPixSuite* ppix_ = nullptr;
    const PrSDKPPix2Suite* ppix2_ = nullptr;
    const PF_TransitionSuite* transition_ = nullptr;
    const PrSDKVideoSegmentSuite* videoSegment_ = nullptr;
    piSuitesPtr suites_ = nullptr;
    PrTimelineID timelineID_ = 0;
    csSDK_int32 nodeID_ = 0;
    csSDK_uint32 deviceIndex_ = 0;
    PrGPUDeviceInfo deviceInfo_ = {};
};
