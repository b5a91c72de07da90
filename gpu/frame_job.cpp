#include "gpu/frame_job.h"

#include <cstring>
#include <string>

#include "gpu/metal_lut.h"
#include "native/src/log.h"

namespace twgpu {
namespace {

// 'badf': no format that a frame can have.
constexpr auto kNoFormat = static_cast<PrPixelFormat>(0x66646162);

int bytesPerPixel(bool is32f) {
    return is32f ? 16 : 8;
}

bool find(const PrSDKGPUDeviceSuite& gpuDevice, const PrSDKPPixSuite& ppix, PPixHand handle,
          DeviceFrame& frame) {
    return gpuDevice.GetGPUPPixData(handle, &frame.memory) >= 0 && frame.memory &&
           ppix.GetRowBytes(handle, &frame.rowBytes) >= 0;
}

void setLut(LutKernelArgs& args, const tw::Lut3D& lut) {
    args.size = lut.size;
    std::memcpy(args.dmin, lut.domainMin, sizeof args.dmin);
    std::memcpy(args.dmax, lut.domainMax, sizeof args.dmax);
}

void setPattern(LutKernelArgs& args, int n) {
    args.probe = n;
    args.probeCols = args.probeRows = 1;
    if (n != 0) tw::probeGrid(n, args.width, args.height, &args.probeCols, &args.probeRows);
}

LutKernelArgs argumentsOf(const FrameJob& job, const tw::Lut3D& lut) {
    LutKernelArgs args = {};
    args.srcPitch = job.source.rowBytes / bytesPerPixel(job.is32f);
    args.dstPitch = job.destination.rowBytes / bytesPerPixel(job.is32f);
    args.is16f = job.is32f ? 0 : 1;
    args.width = job.width;
    args.height = job.height;
    args.amount = job.amount;
    setLut(args, lut);
    setPattern(args, job.pattern);
    return args;
}

}  // namespace

bool describe(const PrSDKGPUDeviceSuite& gpuDevice, const PrSDKPPixSuite& ppix, PPixHand source,
              PPixHand destination, FrameJob& job) {
    if (!find(gpuDevice, ppix, source, job.source) ||
        !find(gpuDevice, ppix, destination, job.destination))
        return false;
    // A format that cannot be had is taken for half floats, on purpose, as is every other one.
    PrPixelFormat format = kNoFormat;
    ppix.GetPixelFormat(destination, &format);
    job.is32f = format == PrPixelFormat_GPU_BGRA_4444_32f;
    prRect bounds = {};
    if (ppix.GetBounds(destination, &bounds) < 0) return false;
    job.width = bounds.right - bounds.left;
    job.height = bounds.bottom - bounds.top;
    return true;
}

bool launch(Device& device, const PrGPUDeviceInfo& info, const FrameJob& job,
            const std::shared_ptr<const tw::Lut3D>& lut) {
    if (!upload(device, info.outDeviceHandle, lut)) return false;
    std::string err;
    if (twmetal::Launch(info.outCommandQueueHandle, device.pipeline.get(), job.source.memory,
                        job.destination.memory, device.lutBuffer.get(), argumentsOf(job, *lut),
                        false, &err, nullptr))
        return true;
    tw::logLine("GPU: Metal launch failed: %s", err.c_str());
    return false;
}

}  // namespace twgpu
