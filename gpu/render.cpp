// One frame on the GPU.
#include <cstdio>

#include "gpu/device.h"
#include "gpu/filter.h"
#include "gpu/frame_job.h"
#include "native/src/c_locale.h"
#include "native/src/log_on_change.h"
#include "native/src/never_destroyed.h"

namespace {

float percentOf(const PrParam& value) {
    switch (value.mType) {
        case kPrParamType_Int32:
            return static_cast<float>(value.mInt32);
        case kPrParamType_Float32:
            return value.mFloat32;
        case kPrParamType_Float64:
            return static_cast<float>(value.mFloat64);
        default:
            return 0.0f;
    }
}

}  // namespace

void TintwellGPU::LogSetup(const twgpu::FrameJob& job) const {
    const int size = job.pattern != 0 ? job.pattern : lut_ ? lut_->size : 0;
    char line[200];
    {
        const tw::CLocaleScope cNumbers;
        std::snprintf(line, sizeof line, "GPU Render %s fmt=%s %dx%d %s amount=%.3f lut=%d%s",
                      twgpu::frameworkName(deviceInfo_.outDeviceFramework),
                      job.is32f ? "32f" : "16f", job.width, job.height,
                      job.inPlace() ? "in-place" : "src->dst", static_cast<double>(job.amount),
                      size, job.pattern != 0 ? " pattern" : "");
    }
    // Steady playback leaves one line, not one a frame.
    static tw::NeverDestroyed<tw::LogOnChange> lines("GPU setup line");
    lines->log(line);
}

prSuiteError TintwellGPU::Render(const PrGPUFilterRenderParams* params, const PPixHand* frames,
                                 csSDK_size_t frameCount, PPixHand* outFrame) {
    if (frameCount == 0 || !outFrame || !*outFrame) return suiteError_Fail;
    const PrTime time = params->inClipTime;
    twgpu::FrameJob job;
    job.amount = percentOf(param(kAmount, time)) / 100.0f;
    if (!lutRead_) ReadLut(time);
    job.pattern = lut_ ? lut_->probe : 0;
    if (!twgpu::describe(*gpuDevice_, *ppix_, frames[0], *outFrame, job)) return suiteError_Fail;
    LogSetup(job);

    const bool apply = job.amount > 0.0f && tw::kindOf(lut_.get()) == tw::LutKind::kLut;
    if (!apply && job.pattern == 0 && job.inPlace())
        return suiteError_NoError;  // the frame is right as it is
    if (!apply) job.amount = 0.0f;
    twgpu::Device& device = twgpu::DeviceFor(deviceIndex_);
    const std::lock_guard lock(device.mutex);
    const bool launched = twgpu::launch(device, deviceInfo_, job, apply ? lut_ : Identity());
    return launched ? suiteError_NoError : suiteError_Fail;
}
