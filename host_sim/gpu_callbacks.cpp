#include "host_sim/gpu_callbacks.h"

#include "host_api/host_api.h"
#include "host_sim/gpu_side.h"
#include "host_sim/session.h"

namespace host_sim {
namespace {

// Asked once by every call that can fail.
bool isRefused() {
    return Session::called().refusals.answer(Refusal::kGpuCall) != 0;
}

prSuiteError getDeviceCount(csSDK_uint32* count) {
    *count = GpuSide::called().deviceCount();
    return suiteError_NoError;
}

prSuiteError getDeviceInfo(csSDK_uint32 version, csSDK_uint32 index, PrGPUDeviceInfo* info) {
    if (isRefused()) return suiteError_Fail;
    return GpuSide::current().deviceInfo(version, index, info);
}

// Calls answer(frame) for a frame that the host knows.
template <class Answer>
prSuiteError ask(PPixHand handle, const char* callback, Answer answer) {
    if (isRefused()) return suiteError_Fail;
    GpuFrame* frame = GpuSide::current().frameOf(handle, callback);
    if (frame == nullptr) return suiteError_IDNotValid;
    answer(*frame);
    return suiteError_NoError;
}

prSuiteError getFrameMemory(PPixHand handle, void** memory) {
    return ask(handle, "GetGPUPPixData", [&](GpuFrame& frame) { *memory = frame.memory(); });
}

prSuiteError getBounds(PPixHand handle, prRect* bounds) {
    return ask(handle, "GetBounds", [&](GpuFrame& frame) { *bounds = frame.bounds(); });
}

prSuiteError getRowBytes(PPixHand handle, csSDK_int32* rowBytes) {
    return ask(handle, "GetRowBytes", [&](GpuFrame& frame) { *rowBytes = frame.rowBytes(); });
}

prSuiteError getPixelFormat(PPixHand handle, PrPixelFormat* format) {
    const bool refused = GpuSide::current().refusesFormats();
    const prSuiteError error = ask(handle, "GetPixelFormat", [&](GpuFrame& frame) {
        if (!refused) *format = frame.format();
    });
    return refused ? suiteError_Fail : error;
}

csSDK_uint32 getPtrSize(PrMemoryPtr block) {
    return GpuSide::called().memory().size(block);
}

void disposePtr(PrMemoryPtr block) {
    GpuSide::called().memory().dispose(block);
}

prSuiteError getParam(csSDK_int32 node, csSDK_int32 index, PrTime time, PrParam* param) {
    if (isRefused()) return suiteError_Fail;
    return GpuSide::current().param(node, index, time, param);
}

PrSDKGPUDeviceSuite deviceSuite() {
    PrSDKGPUDeviceSuite suite = {};
    suite.GetDeviceCount = getDeviceCount;
    suite.GetDeviceInfo = getDeviceInfo;
    suite.GetGPUPPixData = getFrameMemory;
    return suite;
}

PrSDKPPixSuite ppixSuite() {
    PrSDKPPixSuite suite = {};
    suite.GetBounds = getBounds;
    suite.GetRowBytes = getRowBytes;
    suite.GetPixelFormat = getPixelFormat;
    return suite;
}

PrSDKMemoryManagerSuite memorySuite() {
    PrSDKMemoryManagerSuite suite = {};
    suite.GetPtrSize = getPtrSize;
    suite.PrDisposePtr = disposePtr;
    return suite;
}

PrSDKVideoSegmentSuite segmentSuite() {
    PrSDKVideoSegmentSuite suite = {};
    suite.GetParam = getParam;
    return suite;
}

}  // namespace

void offerGpuSuites(SuiteLedger& ledger) {
    static const PrSDKGPUDeviceSuite devices = deviceSuite();
    static const PrSDKGPUImageProcessingSuite images = {};
    static const PrSDKMemoryManagerSuite memory = memorySuite();
    static const PrSDKPPixSuite ppix = ppixSuite();
    static const PrSDKPPix2Suite ppix2 = {};
    static const PF_TransitionSuite transitions = {};
    static const PrSDKVideoSegmentSuite segments = segmentSuite();
    ledger.offerToKeep(kPrSDKGPUDeviceSuite, 2, &devices);
    ledger.offerToKeep(kPrSDKGPUImageProcessingSuite, 1, &images);
    ledger.offerToKeep(kPrSDKMemoryManagerSuite, 4, &memory);
    ledger.offerToKeep(kPrSDKPPixSuite, 1, &ppix);
    ledger.offerToKeep(kPrSDKPPix2Suite, 3, &ppix2);
    ledger.offerToKeep(kPFTransitionSuite, 2, &transitions);
    ledger.offerToKeep(kPrSDKVideoSegmentSuite, 9, &segments);
}

}  // namespace host_sim
