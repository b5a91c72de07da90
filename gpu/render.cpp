// One frame on the GPU.
#include <cstdio>
#include <cstring>
#include <string>

#include "gpu/device.h"
#include "gpu/filter.h"
#include "gpu/metal_lut.h"
#include "native/src/c_locale.h"
#include "native/src/log.h"
#include "native/src/log_on_change.h"
#include "native/src/never_destroyed.h"

namespace {

// 'badf': no format that a frame can have.
constexpr auto kNoFormat = static_cast<PrPixelFormat>(0x66646162);

int bytesPerPixel(bool is32f) {
    return is32f ? 16 : 8;
}

twgpu::LutKernelArgs lutArgs(const tw::Lut3D& lut, float amount) {
    twgpu::LutKernelArgs args = {};
    args.size = lut.size;
    std::memcpy(args.dmin, lut.domainMin, sizeof args.dmin);
    std::memcpy(args.dmax, lut.domainMax, sizeof args.dmax);
    args.amount = amount;
    return args;
}

void setPattern(twgpu::LutKernelArgs& args, int n) {
    args.probe = n;
    args.probeCols = args.probeRows = 1;
    if (n != 0) tw::probeGrid(n, args.width, args.height, &args.probeCols, &args.probeRows);
}

}  // namespace

float TintwellGPU::percent(PrTime time) const {
    const PrParam value = param(kAmount, time);
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

bool TintwellGPU::find(PPixHand handle, Frame& frame) const {
    return gpuDevice_->GetGPUPPixData(handle, &frame.memory) >= 0 && frame.memory &&
           ppix_->GetRowBytes(handle, &frame.rowBytes) >= 0;
}

bool TintwellGPU::describe(PPixHand source, PPixHand destination, Job& job) const {
    if (!find(source, job.source) || !find(destination, job.destination)) return false;
    // A format that cannot be had is taken for half floats, on purpose, as is every other one.
    PrPixelFormat format = kNoFormat;
    ppix_->GetPixelFormat(destination, &format);
    job.is32f = format == PrPixelFormat_GPU_BGRA_4444_32f;
    prRect bounds = {};
    if (ppix_->GetBounds(destination, &bounds) < 0) return false;
    job.width = bounds.right - bounds.left;
    job.height = bounds.bottom - bounds.top;
    return true;
}

void TintwellGPU::LogSetup(const Job& job) const {
    const bool inPlace = job.source.memory == job.destination.memory;
    const int pattern = patternSize();
    const int size = pattern != 0 ? pattern : lut_ ? lut_->size : 0;
    char line[200];
    {
        const tw::CLocaleScope cNumbers;
        std::snprintf(line, sizeof line, "GPU Render %s fmt=%s %dx%d %s amount=%.3f lut=%d%s",
                      twgpu::frameworkName(deviceInfo_.outDeviceFramework),
                      job.is32f ? "32f" : "16f", job.width, job.height,
                      inPlace ? "in-place" : "src->dst", static_cast<double>(job.amount), size,
                      pattern != 0 ? " pattern" : "");
    }
    // Steady playback leaves one line, not one a frame.
    static tw::NeverDestroyed<tw::LogOnChange> lines("GPU setup line");
    lines->log(line);
}

prSuiteError TintwellGPU::Render(const PrGPUFilterRenderParams* params, const PPixHand* frames,
                                 csSDK_size_t frameCount, PPixHand* outFrame) {
    if (frameCount == 0 || !outFrame || !*outFrame) return suiteError_Fail;
    const PrTime time = params->inClipTime;
    Job job;
    job.amount = percent(time) / 100.0f;
    if (!lutRead_) ReadLut(time);
    // A kernel must not run on memory that is not there.
    if (!describe(frames[0], *outFrame, job)) return suiteError_Fail;
    LogSetup(job);

    const bool apply = job.amount > 0.0f && tw::kindOf(lut_.get()) == tw::LutKind::kLut;
    if (!apply && patternSize() == 0 && job.source.memory == job.destination.memory)
        return suiteError_NoError;  // the frame is right as it is
    if (!apply) job.amount = 0.0f;
    return launch(job, apply ? lut_ : Identity()) ? suiteError_NoError : suiteError_Fail;
}

bool TintwellGPU::launch(const Job& job, const std::shared_ptr<const tw::Lut3D>& lut) const {
    twgpu::Device& device = twgpu::DeviceFor(deviceIndex_);
    const std::lock_guard lock(device.mutex);
    if (!twgpu::upload(device, deviceInfo_.outDeviceHandle, lut)) return false;

    twgpu::LutKernelArgs args = lutArgs(*lut, job.amount);
    args.srcPitch = job.source.rowBytes / bytesPerPixel(job.is32f);
    args.dstPitch = job.destination.rowBytes / bytesPerPixel(job.is32f);
    args.is16f = job.is32f ? 0 : 1;
    args.width = job.width;
    args.height = job.height;
    setPattern(args, patternSize());

    std::string err;
    if (twmetal::Launch(deviceInfo_.outCommandQueueHandle, device.pipeline.get(), job.source.memory,
                        job.destination.memory, device.lutBuffer.get(), args, false, &err, nullptr))
        return true;
    tw::logLine("GPU: Metal launch failed: %s", err.c_str());
    return false;
}
