#include "tests/faults/gpu_scenario.h"

#include <gtest/gtest.h>

#include "gpu/metal_lut.h"
#include "tests/gpu/test_device.h"
#include "tests/software_metal/settled.h"
#include "tests/support/frames.h"

namespace faults {

using twtest::widened;

BadDevice::BadDevice(const std::optional<Faults>& faults) : isBad_(faults) {
    if (isBad_) software_metal::setFaults(*faults);
}

BadDevice::~BadDevice() {
    if (isBad_) software_metal::setFaults({});
}

GpuScenario::GpuScenario(const std::string& text, const std::optional<Faults>& faults)
    : EffectScenario(widened(text)), faults_(faults) {
    const std::vector<host_sim::GpuDeviceSettings> devices(2);
    side_ = std::make_unique<host_sim::GpuSide>(host(), devices);
    side_->enter();
    values_ = gpuValuesOf(effect());
}

void GpuScenario::close() {
    side_.reset();
    HostScenario::close();
    EXPECT_EQ(twtest::settledLiveObjects(), keptObjects_);
    EXPECT_EQ(software_metal::takeMisuse(), "");
}

std::string GpuScenario::answer(prSuiteError error, const std::string& word) {
    constexpr prSuiteError kFail = -2147483647 - 1;  // 0x80000000
    EXPECT_TRUE(error == 0 || error == kFail) << error;
    return error == 0 ? word : "fails";
}

RenderedFrame::RenderedFrame(host_sim::GpuSide& side, const std::string& text)
    : side_(side),
      input_(twtest::scattered(PrPixelFormat_BGRA_4444_32f, 20, 18)),
      expected_(input_),
      source_(side.device(), PrPixelFormat_GPU_BGRA_4444_32f, input_) {
    const tw::Lut3D lut = twtest::parsed(text);
    if (lut.probe != 0) expected_ = twtest::patterned(lut.probe, input_);
    if (lut.size != 0) expected_ = twtest::graded(lut, input_, input_, 1.0f);
    erase();
}

prSuiteError RenderedFrame::render(host_sim::GpuInstance& instance) {
    return instance.render(source_, *target_);
}

std::string RenderedFrame::picture() {
    side_.wait();
    EXPECT_EQ(source_.damage(), std::nullopt);
    EXPECT_EQ(target_->damage(), std::nullopt);
    const auto now = target_->download().pixelBytes();
    erase();
    if (now == input_.pixelBytes()) return "copy";
    if (now == expected_.pixelBytes()) return "right";
    return now == target_->download().pixelBytes() ? "untouched" : "other picture";
}

void RenderedFrame::erase() {
    target_.emplace(side_.device(), PrPixelFormat_GPU_BGRA_4444_32f, input_.width(),
                    input_.height());
}

void expectGpu(const Begin& begin, const Expected& expected, const std::vector<Kind>& kinds) {
    const host_sim::Module module(TINTWELL_MODULE);
    {
        // Compiled once, so that the children need not.
        const twtest::Handle device(twmetal::DefaultDevice());
        const twtest::Handle pipeline(twmetal::CreatePipeline(device.get(), nullptr));
    }
    failInTurn(kinds, begin, expected);
}

}  // namespace faults
