#include "gpu/device.h"

#include <atomic>
#include <map>
#include <string>

#include "gpu/metal_lut.h"
#include "native/src/log.h"

namespace twgpu {
namespace {

constexpr csSDK_uint32 kMetal = 2;

bool compileKernel(Device& device, const PrGPUDeviceInfo& info) {
    if (device.framework != kMetal) {
        tw::logLine("GPU: framework %s not supported; CPU render", frameworkName(device.framework));
        return false;
    }
    std::string err;
    device.pipeline = twmetal::CreatePipeline(info.outDeviceHandle, &err);
    if (!device.pipeline) tw::logLine("GPU: Metal kernel failed: %s", err.c_str());
    return device.pipeline != nullptr;
}

void logReady(unsigned index, csSDK_uint32 framework) {
    static std::atomic<bool> logged{false};
    if (logged.exchange(true)) return;
    tw::logLine("GPU: filter ready on device %u (%s)", index, frameworkName(framework));
}

}  // namespace

Device& DeviceFor(unsigned index) {
    static tw::Mutex gDevicesMu("device map");
    // Not destroyed at exit: the host may be rendering still.
    static auto* const gDevices = new std::map<unsigned, std::unique_ptr<Device>>;
    const std::lock_guard lock(gDevicesMu);
    std::unique_ptr<Device>& device = (*gDevices)[index];
    if (!device) device = std::make_unique<Device>();
    return *device;
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
    twmetal::Release(device.lutBuffer);
    device.lutBuffer = twmetal::NewBuffer(deviceHandle, lut->data.data(),
                                          tw::latticeFloats(lut->size) * sizeof(float));
    if (!device.lutBuffer) {
        tw::logLine("GPU: Metal LUT upload failed");
        return false;
    }
    device.lut = lut;
    return true;
}

}  // namespace twgpu
