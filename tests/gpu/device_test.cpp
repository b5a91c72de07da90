// The records of the devices.
#include "gpu/device.h"

#include <gtest/gtest.h>

#include <mutex>

namespace {

TEST(DeviceRecord, isOneForEachIndex) {
    twgpu::Device& first = twgpu::DeviceFor(0);
    EXPECT_NE(&first, &twgpu::DeviceFor(1));
    EXPECT_EQ(&first, &twgpu::DeviceFor(0));
}

#ifdef TINTWELL_CHECK_LOCKS
// Which shows that it takes a lock at all.
TEST(DeviceRecordDeathTest, isNotLookedUpUnderALock) {
    tw::Mutex other("other");
    const std::lock_guard lock(other);
    EXPECT_DEATH(twgpu::DeviceFor(0), "\"device map\" is taken inside \"other\"");
}
#endif

}  // namespace
