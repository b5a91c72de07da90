// One frame on the GPU: what the host tells of it, and how it is launched.
#pragma once

#include <memory>

#include "gpu/device.h"
#include "gpu/gpu_filter_interface.h"
#include "native/src/lut_engine.h"

namespace twgpu {

// A frame's memory on the device and its rows.
struct DeviceFrame {
    void* memory = nullptr;
    csSDK_int32 rowBytes = 0;
};

struct FrameJob {
    DeviceFrame source;
    DeviceFrame destination;  // may be the source
    bool is32f = false;
    int width = 0;
    int height = 0;
    float amount = 0.0f;  // 0..1; what the kernel blends by is 0 for a copy or the pattern
    int pattern = 0;      // points an axis of the calibration pattern; 0: none is drawn

    bool inPlace() const { return source.memory == destination.memory; }
};

// Asks the host for memory, rows, format and bounds. False when it does not tell: a kernel must not
// run on memory that is not there. Only the format may be unknown.
bool describe(const PrSDKGPUDeviceSuite& gpuDevice, const PrSDKPPixSuite& ppix, PPixHand source,
              PPixHand destination, FrameJob& job);

// Brings the LUT up when it is another one than the device's, and commits the kernel without
// waiting. False after a log line. The caller holds the device's mutex.
bool launch(Device& device, const PrGPUDeviceInfo& info, const FrameJob& job,
            const std::shared_ptr<const tw::Lut3D>& lut);

}  // namespace twgpu
