#include "gpu/filter_base.h"

namespace {

SPBasicSuite* basicSuite(piSuitesPtr suites) {
    return suites && suites->utilFuncs ? suites->utilFuncs->getSPBasicSuite() : nullptr;
}

template <typename Suite>
void acquire(SPBasicSuite* basic, const char* name, int version, const Suite*& suite) {
    const void* table = nullptr;
    const bool got = basic && basic->AcquireSuite(name, version, &table) == 0;
    suite = got ? static_cast<const Suite*>(table) : nullptr;
}

}  // namespace

prSuiteError PrGPUFilterBase::Initialize(PrGPUFilterInstance* instance) {
    suites_ = instance->piSuites;
    timelineID_ = instance->inTimelineID;
    nodeID_ = instance->inNodeID;
    deviceIndex_ = instance->inDeviceIndex;

    SPBasicSuite* basic = basicSuite(suites_);
    acquire(basic, kPrSDKGPUDeviceSuite, 2, gpuDevice_);
    acquire(basic, kPrSDKGPUImageProcessingSuite, 1, imageProcessing_);
    acquire(basic, kPrSDKMemoryManagerSuite, 4, memory_);
    acquire(basic, kPrSDKPPixSuite, 1, ppix_);
    acquire(basic, kPrSDKPPix2Suite, 3, ppix2_);
    acquire(basic, kPFTransitionSuite, 2, transition_);
    acquire(basic, kPrSDKVideoSegmentSuite, 9, videoSegment_);

    constexpr csSDK_uint32 kInfoVersion = 2;
    if (gpuDevice_) gpuDevice_->GetDeviceInfo(kInfoVersion, deviceIndex_, &deviceInfo_);
    return suiteError_NoError;
}

prSuiteError PrGPUFilterBase::GetFrameDependencies(const PrGPUFilterRenderParams* /*params*/,
                                                   csSDK_int32* /*queryIndex*/,
                                                   PrGPUFilterFrameDependency* /*dependencies*/) {
    return suiteError_NotImplemented;
}

prSuiteError PrGPUFilterBase::Precompute(const PrGPUFilterRenderParams* /*params*/,
                                         csSDK_int32 /*index*/, PPixHand /*frame*/) {
    return suiteError_NotImplemented;
}
