// What instances share on a device, and what is left of them.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "tests/gpu/filter_fixture.h"

namespace {

using namespace twtest;

class Sharing : public FilterTest {
protected:
    // Buffers that one frame of an instance costs, frames' own not counted.
    long uploads(GpuInstance& instance, unsigned device = 0) {
        GpuFrame both(gpu_->device(device), PrPixelFormat_GPU_BGRA_4444_32f, noisePicture(5, 5));
        const long before = counts().buffers;
        EXPECT_EQ(instance.render(both, both), 0);
        gpu_->wait();
        return counts().buffers - before;
    }
};

TEST_F(Sharing, oneUploadForAllFramesOfAnInstance) {
    setLook(lutText(9, 1));
    GpuInstance instance = make();
    EXPECT_EQ(uploads(instance), 1);
    EXPECT_EQ(uploads(instance), 0);
}

TEST_F(Sharing, noUploadForASecondInstanceWithTheSameLut) {
    setLook(lutText(9, 1));
    GpuInstance first = make();
    GpuInstance second = make();
    EXPECT_EQ(uploads(first), 1);
    EXPECT_EQ(uploads(second), 0);
    EXPECT_EQ(uploads(first), 0);
}

TEST_F(Sharing, oneUploadForEachDevice) {
    open({{}, {}});
    setLook(lutText(9, 1));
    GpuInstance first = make(0);
    GpuInstance second = make(1);
    EXPECT_EQ(uploads(first, 0), 1);
    EXPECT_EQ(uploads(second, 1), 1);
    EXPECT_EQ(uploads(first, 0), 0);
}

TEST_F(Sharing, anUploadForEachChangeOfLut) {
    setLook(lutText(9, 1));
    GpuInstance first = make();
    setLook(lutText(9, 2));
    GpuInstance second = make();
    EXPECT_EQ(uploads(first), 1);
    EXPECT_EQ(uploads(second), 1);
    EXPECT_EQ(uploads(first), 1);
}

// The old buffer is gone by then.
TEST_F(Sharing, theOldLutGoesUpAgain_afterAnUploadThatFailed) {
    setLook(lutText(9, 1));
    GpuInstance first = make();
    setLook(lutText(9, 2));
    GpuInstance second = make();
    EXPECT_EQ(uploads(first), 1);
    GpuFrame both = frame(noisePicture(5, 5));
    software_metal::setFaults(faultOf(&Faults::noBuffer));
    EXPECT_EQ(second.render(both, both), kFail);
    software_metal::setFaults({});
    EXPECT_EQ(uploads(first), 1);
}

TEST_F(Sharing, theIdentityGoesUpForACopy) {
    setLook(lutText(9, 1));
    effect_->setSlider(kAmount, 0.0);
    GpuInstance instance = make();
    const Frame picture = noisePicture(5, 5);
    GpuFrame source = frame(picture);
    GpuFrame destination = emptyFrame(picture);
    const long before = counts().buffers;
    EXPECT_EQ(instance.render(source, destination), 0);
    EXPECT_EQ(instance.render(source, destination), 0);
    EXPECT_EQ(counts().buffers - before, 1);
}

TEST_F(Sharing, aNewLutReachesTheGpuThroughANewInstanceOnly) {
    const Frame picture = noisePicture(6, 6);
    setLook(lutText(5, 1));
    const Frame before = cpuPicture(picture);
    GpuInstance old = make();
    setLook(lutText(5, 2));
    const Frame after = cpuPicture(picture);
    GpuInstance made = make();
    GpuFrame source = frame(picture);
    GpuFrame destination = emptyFrame(picture);
    EXPECT_EQ(old.render(source, destination), 0);
    gpu_->wait();
    EXPECT_EQ(destination.download().pixelBytes(), before.pixelBytes());
    EXPECT_EQ(made.render(source, destination), 0);
    gpu_->wait();
    EXPECT_EQ(destination.download().pixelBytes(), after.pixelBytes());
}

// The devices' records stay with their pipeline, its function and one LUT; nothing else does.
TEST_F(Sharing, leavesNothingBehind_after1000InstancesOnThreeDevicesFromFourThreads) {
    constexpr unsigned kDevices = 3;
    open({{}, {}, {}});
    std::vector<GpuValues> looks;
    for (const char* text : {"TWLUT0", "TWLUTP 3"}) {
        setLook(text);
        looks.push_back(values());
    }
    for (const std::uint64_t seed : {1U, 2U}) {
        setLook(lutText(5, seed));
        looks.push_back(values());
    }
    const Frame picture = noisePicture(20, 5);
    std::atomic<int> made{0};
    const auto work = [&](unsigned thread) {
        for (unsigned i = 0; i < 250; ++i) {
            const unsigned device = (i + thread) % kDevices;
            GpuInstance instance(*gpu_, looks[i % looks.size()], device);
            GpuFrame source(gpu_->device(device), PrPixelFormat_GPU_BGRA_4444_32f, picture);
            GpuFrame destination(gpu_->device(device), PrPixelFormat_GPU_BGRA_4444_32f, 20, 5);
            if (instance.render(source, destination) == 0) ++made;
        }
    };
    std::vector<std::thread> threads;
    for (unsigned thread = 0; thread < 4; ++thread)
        threads.emplace_back(work, thread);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(made, 1000);
    EXPECT_EQ(counts().compilations, static_cast<long>(kDevices));
    EXPECT_EQ(gpu_->memory().allocated(), gpu_->memory().disposed());
    gpu_.reset();
    EXPECT_EQ(settledLiveObjects(), 3L * kDevices);
}

}  // namespace
