// Threads take turns on a device: a frame is committed under its lock.
#include <gtest/gtest.h>

#include <string>

#include "tests/gpu/filter_fixture.h"
#include "tests/support/stand_in_module.h"

namespace {

using namespace twtest;

class DeviceLock : public FilterTest {};

TEST_F(DeviceLock, isHeldWhenAFrameIsCommitted) {
    const auto heldLock = heldLockOf(host_.module());
    setLook(lutText(3, 1));
    GpuInstance instance = make();
    GpuFrame picture = frame(noisePicture(4, 4));
    std::string held;
    Faults none;
    none.atCommit = [&] {
        if (const char* lock = heldLock()) held = lock;
    };
    software_metal::setFaults(none);
    EXPECT_EQ(instance.render(picture, picture), 0);
    EXPECT_EQ(held, "device");
    EXPECT_EQ(heldLock(), nullptr);
}

}  // namespace
