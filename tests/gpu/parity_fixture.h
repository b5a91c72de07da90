// One of the kernel's two texts on the software device.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/gpu/device_fixture.h"
#include "tests/gpu/differences.h"
#include "tests/gpu/parity_table.h"
#include "tests/gpu/rounding.h"

namespace twtest {

// The picture by the reference of this rounding.
inline Picture referencePicture(const tw::Lut3D& lut, const ParityFrame& frame, Rounding rounding) {
    Picture picture(frame.shape);
    for (int y = 0; y < frame.shape.height; ++y) {
        for (int x = 0; x < frame.shape.width; ++x) {
            const auto in = [&](int channel) { return frame.source.at(x, y, channel); };
            const auto [red, green, blue] =
                gradedColour(lut, {in(2), in(1), in(0)}, frame.amount, rounding);
            const float channels[] = {blue, green, red, in(3)};
            for (int c = 0; c < 4; ++c)
                picture.set(x, y, c, channels[c]);
        }
    }
    return picture;
}

class Parity : public DeviceTest {
protected:
    // Before any rendering; without it the text is the one that is shipped for this processor.
    void useText(Rounding rounding) {
        software_metal::Faults other;
        other.source = kernelText(rounding);
        software_metal::setFaults(other);
        device_ = Device();
        ASSERT_TRUE(device_.pipeline);
    }

    Picture graded(const tw::Lut3D& lut, const ParityFrame& frame) {
        std::string err;
        Picture picture =
            kernelPicture(device_, lut, frame.source, frame.amount, frame.place, frame.shape, &err);
        EXPECT_EQ(err, "");
        EXPECT_TRUE(picture.paddingIntact());
        return picture;
    }

    void TearDown() override {
        software_metal::setFlushesSubnormals(false);
        device_ = Device{Handle(), Handle(), Handle()};
        DeviceTest::TearDown();
    }

    Device device_;
};

}  // namespace twtest
