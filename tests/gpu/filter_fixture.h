// The effect's GPU filter in the simulated Premiere Pro, on software devices.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "host_sim/gpu_instance.h"
#include "host_sim/gpu_side.h"
#include "host_sim/host.h"
#include "native/src/lut_text.h"
#include "software_metal/control.h"
#include "tests/software_metal/settled.h"
#include "tests/support/effect_log.h"
#include "tests/support/luts.h"
#include "tests/support/parameter_indices.h"
#include "tests/support/random.h"

namespace twtest {

using host_sim::Frame;
using host_sim::GpuDeviceSettings;
using host_sim::GpuFrame;
using host_sim::GpuInstance;
using host_sim::GpuSide;
using host_sim::GpuValue;
using host_sim::GpuValues;
using software_metal::counts;
using software_metal::Faults;

inline constexpr prSuiteError kFail = -2147483647 - 1;  // 0x80000000

inline std::string lutText(int size, std::uint64_t seed) {
    return tw::toEmbeddedText(scatteredLut(size, seed), 42, "Look");
}

// Colours in and around 0..1.
inline Frame noisePicture(int width, int height, std::uint64_t seed = 1) {
    Frame picture(PrPixelFormat_BGRA_4444_32f, width, height);
    Random random(seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            picture.setPixelF(x, y,
                              {random.between(-0.2f, 1.2f), random.between(-0.2f, 1.2f),
                               random.between(-0.2f, 1.2f), random.between(0.0f, 1.0f)});
    }
    return picture;
}

// Starts with one Metal device and one applied effect without a LUT. Ends with all books.
class FilterTest : public ::testing::Test {
protected:
    FilterTest() {
        host_.start();
        effect_ = &host_.apply();
        open({{}});
    }

    void TearDown() override {
        software_metal::setFaults({});
        gpu_.reset();
        EXPECT_EQ(host_.close(), Lines());
        EXPECT_EQ(software_metal::takeMisuse(), "");
    }

    // Other devices instead.
    void open(const std::vector<GpuDeviceSettings>& devices) {
        gpu_.reset();
        gpu_ = std::make_unique<GpuSide>(host_, devices);
        gpu_->enter();
    }

    void setLook(const std::string& text) { EXPECT_EQ(effect_->scan(kLut, text), 0); }
    GpuValues values() const { return host_sim::gpuValuesOf(*effect_); }
    GpuInstance make(unsigned device = 0) { return GpuInstance(*gpu_, values(), device); }

    GpuFrame frame(const Frame& picture, PrPixelFormat format = PrPixelFormat_GPU_BGRA_4444_32f) {
        return GpuFrame(gpu_->device(), format, picture);
    }
    GpuFrame emptyFrame(const Frame& like, PrPixelFormat format = PrPixelFormat_GPU_BGRA_4444_32f) {
        return GpuFrame(gpu_->device(), format, like.width(), like.height(), {.padding = 5});
    }

    // The effect's own picture, from EffectMain.
    Frame cpuPicture(const Frame& picture) {
        Frame out(PrPixelFormat_BGRA_4444_32f, picture.width(), picture.height());
        EXPECT_EQ(effect_->render(picture, out).error, 0);
        return out;
    }

    // What the GPU side has logged.
    Lines gpuLines() const {
        Lines lines = logLines(home_);
        std::erase_if(lines, [](const std::string& line) { return !line.starts_with("GPU"); });
        return lines;
    }

    TempHome home_;
    host_sim::Host host_{TINTWELL_MODULE, host_sim::premierePro()};
    host_sim::Instance* effect_ = nullptr;
    std::unique_ptr<GpuSide> gpu_;
};

inline Faults faultOf(bool Faults::*which, std::optional<std::string> error = "injected") {
    Faults faults;
    faults.*which = true;
    faults.error = std::move(error);
    return faults;
}

inline const Lines kReadyLine = {"GPU: filter ready on device 0 (Metal)"};

}  // namespace twtest
