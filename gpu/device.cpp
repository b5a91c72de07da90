#include "gpu/device.h"

#include <atomic>
#include <map>
#include <string>

#include "gpu/metal_lut.h"
#include "native/src/log.h"
#include "native/src/never_destroyed.h"

namespace twgpu {
namespace {

constexpr csSDK_uint32 kMetal = 2;

bool compileKernel(Device& device, const PrGPUDeviceInfo& info) {
    if (device.framework != kMetal) {
        tw::logLine("GPU: framework %s not supported; CPU render", frameworkName(device.framework));
        return false;
    }
    std::string err;
    device.pipeline = BackendObject(twmetal::CreatePipeline(info.outDeviceHandle, &err));
    if (!device.pipeline) tw::logLine("GPU: Metal kernel failed: %s", err.c_str());
    return static_cast<bool>(device.pipeline);
}

void logReady(unsigned index, csSDK_uint32 framework) {
    static std::atomic<bool> logged{false};
    if (logged.exchange(true)) return;
    tw::logLine("GPU: filter ready on device %u (%s)", index, frameworkName(framework));
}

}  // namespace

Device& DeviceFor(unsigned index) {
    static tw::NeverDestroyed<tw::Mutex> gDevicesMu("device map");
    static tw::NeverDestroyed<std::map<unsigned, Device>> gDevices;
    const std::lock_guard lock(*gDevicesMu);
    return (*gDevices)[index];
}

const char* frameworkName(csSDK_uint32 framework) {
    static constexpr const char* kNames[] = {"CUDA", "OpenCL", "Metal", "DirectX"};
    return framework < 4 ? kNames[framework] : "?";
}

bool prepare(Device& device, unsigned index, const PrGPUDeviceInfo& info) {
    if (!device.ready) {
        if (device.failed) return false;
        // Counts as failed until it has succeeded, whatever happens on the way.
        device.failed = true;
        device.framework = info.outDeviceFramework;
        if (!compileKernel(device, info)) return false;
        device.ready = true;
        device.failed = false;
    }
    logReady(index, device.framework);
    return true;
}

bool upload(Device& device, void* deviceHandle, const std::shared_ptr<const tw::Lut3D>& lut) {
    if (device.lut == lut) return true;
    device.lut.reset();
    device.lutBuffer.reset();
    device.lutBuffer = BackendObject(twmetal::NewBuffer(
        deviceHandle, lut->data.data(), tw::latticeFloats(lut->size) * sizeof(float)));
    if (!device.lutBuffer) {
        tw::logLine("GPU: Metal LUT upload failed");
        return false;
    }
    device.lut = lut;
    return true;
}

}  // namespace twgpu
