// The GPU of a worker.
#include <gtest/gtest.h>

#include <cstdio>

#include "tests/support/frames.h"
#include "tests/threads/stress_worker.h"

namespace stress {

using host_sim::Frame;
using host_sim::GpuFrame;
using host_sim::GpuInstance;
using twtest::samePixels;

void Worker::useTheGpu() {
    const unsigned device = random_.below(2) == 0 ? kFirst : kSecond;
    const Effect& effect = random_.below(4) == 0 ? own_ : any(shared_.effects());
    tally_.mayLog("GPU: filter ready on device " + std::to_string(device) + " (Metal)");
    mayLogFailure(*effect.look);
    GpuInstance filter(shared_.gpu(), host_sim::gpuValuesOf(*effect.instance), device);
    EXPECT_EQ(filter.error(), 0);
    tally_.did("GPU instances");
    const int frames = 1 + random_.below(3);
    for (int i = 0; i < frames; ++i)
        renderOnGpu(filter, effect, device);
}

// By the instance that decoded it.
void Worker::mayLogFailure(const Look& look) {
    if (!look.failure.empty()) tally_.mayLog("GPU: embedded LUT: " + look.failure);
}

void Worker::mayLogSetup(const Effect& effect, const Frame& input, bool inPlace) {
    const tw::Lut3D& lut = effect.look->lut;
    char line[200];
    std::snprintf(line, sizeof line, "GPU Render Metal fmt=32f %dx%d %s amount=%.3f lut=%d%s",
                  input.width(), input.height(), inPlace ? "in-place" : "src->dst",
                  kPercents[effect.percent] / 100.0, lut.probe != 0 ? lut.probe : lut.size,
                  lut.probe != 0 ? " pattern" : "");
    tally_.mayLog(line);
}

void Worker::renderOnGpu(GpuInstance& filter, const Effect& effect, unsigned device) {
    const std::size_t scene = any(inputs().floatScenes());
    const Frame& input = inputs().scenes()[scene];
    const bool inPlace = random_.below(3) == 0;
    mayLogSetup(effect, input, inPlace);

    host_sim::GpuSide& gpu = shared_.gpu();
    GpuFrame source(gpu.device(device), PrPixelFormat_GPU_BGRA_4444_32f, input);
    GpuFrame other(gpu.device(device), PrPixelFormat_GPU_BGRA_4444_32f, input.width(),
                   input.height());
    GpuFrame& destination = inPlace ? source : other;
    EXPECT_EQ(filter.render(source, destination), 0);
    gpu.wait();
    EXPECT_EQ(destination.damage(), std::nullopt);
    const Frame output = destination.download();
    if (shared_.gpuFails()) {
        tally_.mayLog("GPU: Metal launch failed: injected");
        EXPECT_TRUE(samePixels(inPlace ? input : blank(input), output));
        tally_.did("GPU frames that fail late");
        return;
    }
    EXPECT_TRUE(samePixels(effect.look->pictures[scene][effect.percent], output))
        << effect.look->label << ", scene " << scene << ", device " << device;
    tally_.did("GPU frames");
}

void Worker::fallBackToTheCpu() {
    const bool isWeak = random_.below(2) == 0;
    const Effect& effect = any(shared_.effects());
    if (isWeak) {
        tally_.logs("GPU: device " + std::to_string(kTooWeak) +
                    " below minimum requirements; CPU render");
    } else {
        tally_.mayLog("GPU: framework OpenCL not supported; CPU render");
        mayLogFailure(*effect.look);
    }
    const GpuInstance filter(shared_.gpu(), host_sim::gpuValuesOf(*effect.instance),
                             isWeak ? kTooWeak : kOpenCL);
    EXPECT_LT(filter.error(), 0);
    tally_.did("GPU instances refused");
    renderOne(effect, any(inputs().floatScenes()));
}

}  // namespace stress
