// What the process keeps for each GPU: the compiled kernel and the LUT that was last uploaded.
#pragma once

#include <memory>

#include "gpu/backend_object.h"
#include "gpu/gpu_filter_interface.h"
#include "native/src/lut_engine.h"
#include "native/src/mutex.h"

namespace twgpu {

// Made on first use, then kept until the process ends. The mutex guards all other fields; it is
// held over a compilation and over the encoding of a frame, never over a call of the host. Lock
// order: the log's mutex only may be taken under it.
struct Device {
    tw::Mutex mutex{"device"};
    csSDK_uint32 framework = 0;  // as of the first initialisation
    bool ready = false;          // `pipeline` is there
    // Preparation was tried and has not succeeded: it is not tried again.
    bool failed = false;
    BackendObject pipeline;
    BackendObject lutBuffer;  // samples of `lut`
    // Held so that its address, by which it is recognised, is no other LUT's.
    std::shared_ptr<const tw::Lut3D> lut;
};

// The record of a device index, which hosts are taken to give to one GPU for as long as the process
// lives. Threads: any; the map's mutex is never held with another.
Device& DeviceFor(unsigned index);

// "CUDA", "OpenCL", "Metal", "DirectX", or "?".
const char* frameworkName(csSDK_uint32 framework);

// Compiles the kernel unless that has been done or has failed before; logs the first failure of the
// device and the first success of the process. False: the device cannot be used. The caller holds
// the device's mutex.
bool prepare(Device& device, unsigned index, const PrGPUDeviceInfo& info);

// Makes `lut` the one in the device's buffer; nothing happens when it is that already. False, after
// a log line, when there is no buffer to be had. The caller holds the device's mutex.
bool upload(Device& device, void* deviceHandle, const std::shared_ptr<const tw::Lut3D>& lut);

}  // namespace twgpu
