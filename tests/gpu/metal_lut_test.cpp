// The compute backend on the software device: what it asks of the device and says when refused.
#include "gpu/metal_lut.h"

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <future>
#include <string>
#include <vector>

#include "tests/gpu/device_fixture.h"
#include "tests/gpu/test_device.h"
#include "tests/support/effect_log.h"

namespace {

using software_metal::counts;
using software_metal::Faults;
using twtest::Device;
using twtest::Handle;
using twtest::logLines;
using twtest::TempHome;

Faults fault(bool Faults::*which, std::optional<std::string> error = "injected") {
    Faults faults;
    faults.*which = true;
    faults.error = std::move(error);
    return faults;
}

class CreatePipeline : public twtest::DeviceTest {
protected:
    // What the backend says when the device has these faults; it must give no pipeline.
    static std::string refusal(const Faults& faults) {
        software_metal::setFaults(faults);
        const Handle device(twmetal::DefaultDevice());
        std::string err = "untouched";
        EXPECT_EQ(twmetal::CreatePipeline(device.get(), &err), nullptr);
        EXPECT_EQ(twmetal::CreatePipeline(device.get(), nullptr), nullptr);
        return err;
    }
};

TEST_F(CreatePipeline, compilesTheKernelWithFastMathsOff) {
    const Handle device(twmetal::DefaultDevice());
    std::string err = "untouched";
    const Handle pipeline(twmetal::CreatePipeline(device.get(), &err));
    EXPECT_NE(pipeline.get(), nullptr);
    EXPECT_EQ(err, "untouched");
    EXPECT_EQ(counts().compilations, 1);
    EXPECT_FALSE(counts().lastFastMaths);
}

TEST_F(CreatePipeline, keepsNothingButThePipelineAndItsFunction) {
    const Handle device(twmetal::DefaultDevice());
    const long before = counts().liveObjects;
    const Handle pipeline(twmetal::CreatePipeline(device.get(), nullptr));
    EXPECT_EQ(counts().liveObjects, before + 2);
}

TEST_F(CreatePipeline, givesTheDevicesWords_whenTheLibraryFails) {
    EXPECT_EQ(refusal(fault(&Faults::noLibrary, "bad text")), "compile: bad text");
}

TEST_F(CreatePipeline, givesAQuestionMark_whenTheLibraryFailsWithoutAnErrorObject) {
    EXPECT_EQ(refusal(fault(&Faults::noLibrary, std::nullopt)), "compile: ?");
}

TEST_F(CreatePipeline, givesTheCompilersOwnWords_whenTheTextIsWrong) {
    Faults faults;
    faults.source = "kernel void TintwellLut(device float* p [[buffer(0)]]) { p[0] = oops; }\n";
    EXPECT_EQ(refusal(faults),
              "compile: program_source failed to compile:\n"
              "program_source:1:65: error: use of undeclared identifier 'oops'\n");
}

TEST_F(CreatePipeline, namesTheFunction_whenTheLibraryLacksIt) {
    EXPECT_EQ(refusal(fault(&Faults::noFunction)), "no TintwellLut function");
    Faults faults;
    faults.source = "kernel void Another(device float* p [[buffer(0)]]) { p[0] = 1.0f; }\n";
    EXPECT_EQ(refusal(faults), "no TintwellLut function");
}

TEST_F(CreatePipeline, givesTheDevicesWords_whenThePipelineFails) {
    EXPECT_EQ(refusal(fault(&Faults::noPipeline, "no registers")), "pipeline: no registers");
}

TEST_F(CreatePipeline, givesAQuestionMark_whenThePipelineFailsWithoutAnErrorObject) {
    EXPECT_EQ(refusal(fault(&Faults::noPipeline, std::nullopt)), "pipeline: ?");
}

class NewBuffer : public twtest::DeviceTest {};

TEST_F(NewBuffer, holdsACopyOfTheBytes) {
    const Handle device(twmetal::DefaultDevice());
    char bytes[] = "sixteen byte buf";
    const Handle buffer(twmetal::NewBuffer(device.get(), bytes, sizeof bytes));
    ASSERT_NE(buffer.get(), nullptr);
    EXPECT_NE(twmetal::Contents(buffer.get()), bytes);
    std::memset(bytes, 0, sizeof bytes);
    EXPECT_STREQ(static_cast<const char*>(twmetal::Contents(buffer.get())), "sixteen byte buf");
}

TEST_F(NewBuffer, isNull_whenThereIsNoneToBeHad) {
    software_metal::setFaults(fault(&Faults::noBuffer));
    const Handle device(twmetal::DefaultDevice());
    EXPECT_EQ(twmetal::NewBuffer(device.get(), "x", 1), nullptr);
}

TEST(Release, ignoresNull) {
    const long before = counts().liveObjects;
    twmetal::Release(nullptr);
    EXPECT_EQ(counts().liveObjects, before);
}

TEST(DeviceName, isTheDevices) {
    const Handle device(twmetal::DefaultDevice());
    EXPECT_EQ(twmetal::DeviceName(device.get()), "Software Metal");
}

// A picture of 2 x 1 pixels that a LUT turns from black to white.
class Launch : public twtest::DeviceTest {
protected:
    Launch() {
        args_.srcPitch = args_.dstPitch = args_.width = 2;
        args_.height = 1;
        args_.size = 2;
        for (int c = 0; c < 3; ++c)
            args_.dmax[c] = 1.0f;
        args_.amount = 1.0f;
        args_.probeCols = args_.probeRows = 1;
    }

    bool launch(bool wait, std::string* err = nullptr, double* gpuMs = nullptr) {
        return twmetal::Launch(device_.queue.get(), device_.pipeline.get(), picture_.get(),
                               picture_.get(), lut_.get(), args_, wait, err, gpuMs);
    }

    std::vector<float> pixels() const {
        const auto* at = static_cast<const float*>(twmetal::Contents(picture_.get()));
        return {at, at + 8};
    }

    TempHome home_;
    std::vector<float> black_ = std::vector<float>(8, 0.0f);
    std::vector<float> white_ = std::vector<float>(24, 1.0f);
    Device device_;
    Handle picture_ = device_.buffer(black_.data(), 32);
    Handle lut_ = device_.buffer(white_.data(), 96);
    twgpu::LutKernelArgs args_ = {};

    void TearDown() override {
        lut_.reset();
        picture_.reset();
        device_ = Device{Handle(), Handle(), Handle()};
        DeviceTest::TearDown();
    }
};

TEST_F(Launch, hasThePictureReady_whenItWaits) {
    std::string err = "untouched";
    double gpuMs = -1.0;
    EXPECT_TRUE(launch(true, &err, &gpuMs));
    EXPECT_EQ(pixels(), (std::vector<float>{1, 1, 1, 0, 1, 1, 1, 0}));
    EXPECT_EQ(err, "untouched");
    EXPECT_GE(gpuMs, 0.0);
    EXPECT_LT(gpuMs, 60e3);
}

TEST_F(Launch, givesTheDevicesTime_inMilliseconds) {
    Faults slow;
    slow.seconds = 0.25;
    software_metal::setFaults(slow);
    double gpuMs = -1.0;
    EXPECT_TRUE(launch(true, nullptr, &gpuMs));
    EXPECT_NEAR(gpuMs, 250.0, 1e-3);
}

// The device begins with no command buffer before `go` is set.
Faults heldUntil(std::promise<void>& go) {
    Faults held;
    held.atExecution = [gate = go.get_future().share()] { gate.wait(); };
    return held;
}

TEST_F(Launch, returnsBeforeTheDeviceIsDone_whenItDoesNotWait) {
    std::promise<void> go;
    software_metal::setFaults(heldUntil(go));
    double gpuMs = -1.0;
    EXPECT_TRUE(launch(false, nullptr, &gpuMs));
    EXPECT_EQ(counts().dispatches, 0);
    EXPECT_EQ(gpuMs, -1.0);
    go.set_value();
    EXPECT_TRUE(launch(true));
    EXPECT_EQ(counts().dispatches, 2);
}

TEST_F(Launch, isDoneAtOnce_whenThePictureIsEmpty) {
    args_.width = 0;
    EXPECT_TRUE(launch(true));
    args_.width = 2;
    args_.height = -1;
    EXPECT_TRUE(launch(true));
    EXPECT_EQ(counts().commandBuffers, 0);
}

TEST_F(Launch, keepsWhatItNeeds_whenEverythingIsReleasedInFlight) {
    std::promise<void> go;
    software_metal::setFaults(heldUntil(go));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(launch(false));
    lut_.reset();
    picture_.reset();
    device_.pipeline.reset();
    go.set_value();
}

TEST_F(Launch, says_noCommandBuffer_whenThereIsNoCommandBuffer) {
    software_metal::setFaults(fault(&Faults::noCommandBuffer));
    std::string err;
    EXPECT_FALSE(launch(false, &err));
    EXPECT_EQ(err, "no command buffer");
    EXPECT_FALSE(launch(false));
}

TEST_F(Launch, says_noCommandBuffer_whenThereIsNoEncoder) {
    software_metal::setFaults(fault(&Faults::noEncoder));
    std::string err;
    EXPECT_FALSE(launch(true, &err));
    EXPECT_EQ(err, "no command buffer");
    EXPECT_FALSE(launch(true));
}

TEST_F(Launch, givesTheDevicesWords_whenTheDeviceFailsWhileItWaits) {
    software_metal::setFaults(fault(&Faults::failExecution, "page fault"));
    std::string err;
    double gpuMs = -1.0;
    EXPECT_FALSE(launch(true, &err, &gpuMs));
    EXPECT_EQ(err, "page fault");
    EXPECT_EQ(gpuMs, -1.0);
    EXPECT_FALSE(launch(true));
    EXPECT_EQ(logLines(home_), std::vector<std::string>());
}

TEST_F(Launch, givesAQuestionMark_whenTheDeviceFailsWithoutAnErrorObject) {
    software_metal::setFaults(fault(&Faults::failExecution, std::nullopt));
    std::string err;
    EXPECT_FALSE(launch(true, &err));
    EXPECT_EQ(err, "?");
}

TEST_F(Launch, logsFiveErrorsAProcess_whenTheDeviceFailsLater) {
    software_metal::setFaults(fault(&Faults::failExecution, "page fault"));
    for (int i = 0; i < 7; ++i)
        EXPECT_TRUE(launch(false));
    software_metal::setFaults({});
    EXPECT_TRUE(launch(true));  // the queue is in order: the seven are over
    EXPECT_EQ(logLines(home_), std::vector<std::string>(5, "GPU: Metal launch failed: page fault"));
}

TEST_F(Launch, logsNothing_whenTheDeviceSucceedsLater) {
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(launch(false));
    EXPECT_TRUE(launch(true));
    EXPECT_EQ(logLines(home_), std::vector<std::string>());
}

}  // namespace
