// Scenarios on the GPU: Premiere Pro with the effect's filter on software devices.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host_sim/gpu_instance.h"
#include "host_sim/gpu_side.h"
#include "software_metal/control.h"
#include "tests/faults/effect_scenario.h"

namespace faults {

using software_metal::Faults;

// The device has these faults, if any, while it lives.
class BadDevice {
public:
    explicit BadDevice(const std::optional<Faults>& faults);
    ~BadDevice();
    BadDevice(const BadDevice&) = delete;
    BadDevice& operator=(const BadDevice&) = delete;

private:
    bool isBad_;
};

// A host with two devices, which have these faults during operations, and an applied effect with
// this LUT. At the end the devices hold no objects but those that the effect keeps.
class GpuScenario : public EffectScenario {
public:
    explicit GpuScenario(const std::string& text, const std::optional<Faults>& faults = {});

    // The device's thread logs what it finds wrong.
    void settle() override { side_->wait(); }
    void close() override;

protected:
    host_sim::GpuSide& side() { return *side_; }
    const std::optional<Faults>& faults() const { return faults_; }
    const host_sim::GpuValues& values() const { return values_; }

    // The word, or "fails".
    static std::string answer(prSuiteError error, const std::string& word);

    // What is kept to the end of the process for a device.
    void keepsPipeline() { keptObjects_ += 2; }
    void keepsLut() { keptObjects_ += 1; }

private:
    std::optional<Faults> faults_;
    std::unique_ptr<host_sim::GpuSide> side_;
    host_sim::GpuValues values_;
    long keptObjects_ = 0;
};

// A frame and what renders with this LUT make of it.
class RenderedFrame {
public:
    RenderedFrame(host_sim::GpuSide& side, const std::string& text);

    prSuiteError render(host_sim::GpuInstance& instance);
    // "right", "copy", "untouched" or "other picture", once the device is through. There is no
    // picture afterwards.
    std::string picture();

private:
    void erase();

    host_sim::GpuSide& side_;
    host_sim::Frame input_;
    host_sim::Frame expected_;
    host_sim::GpuFrame source_;
    std::optional<host_sim::GpuFrame> target_;
};

void expectGpu(const Begin& begin, const Expected& expected,
               const std::vector<Kind>& kinds = gpuKinds());

}  // namespace faults
