// A software device for tests of the GPU path.
#pragma once

#include <gtest/gtest.h>

#include "software_metal/control.h"
#include "tests/gpu/test_device.h"
#include "tests/software_metal/settled.h"

namespace twtest {

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
