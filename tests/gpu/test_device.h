// A software device for tests of the GPU path.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "gpu/backend_object.h"
#include "gpu/metal_lut.h"
#include "software_metal/control.h"
#include "tests/software_metal/settled.h"

namespace twtest {

using Handle = twgpu::BackendObject;

// The kernel, ready to run.
struct Device {
    Handle device{twmetal::DefaultDevice()};
    Handle queue{twmetal::NewQueue(device.get())};
    Handle pipeline{twmetal::CreatePipeline(device.get(), nullptr)};

    Handle buffer(const void* bytes, std::size_t length) const {
        return Handle(twmetal::NewBuffer(device.get(), bytes, length));
    }
};

// Ends each test with a look at the device's books: nothing misused, nothing left.
class DeviceTest : public ::testing::Test {
protected:
    void TearDown() override {
        software_metal::setFaults({});
        EXPECT_EQ(software_metal::takeMisuse(), "");
        EXPECT_EQ(settledLiveObjects(), 0);
    }
};

}  // namespace twtest
