// The kernel on a device, ready to run.
#pragma once

#include <cstddef>

#include "gpu/backend_object.h"
#include "gpu/metal_lut.h"

namespace twtest {

using Handle = twgpu::BackendObject;

struct Device {
    Handle device{twmetal::DefaultDevice()};
    Handle queue{twmetal::NewQueue(device.get())};
    Handle pipeline{twmetal::CreatePipeline(device.get(), nullptr)};

    Handle buffer(const void* bytes, std::size_t length) const {
        return Handle(twmetal::NewBuffer(device.get(), bytes, length));
    }
};

}  // namespace twtest
