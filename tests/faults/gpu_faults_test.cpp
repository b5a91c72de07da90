// The GPU filter while calls fail.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/faults/gpu_scenario.h"

namespace faults {
namespace {

using host_sim::GpuInstance;
using twtest::rotationText;
using twtest::scatteredText;
using twtest::widened;

Faults faultOf(bool Faults::*which) {
    Faults device;
    device.*which = true;
    return device;
}

// An instance is made and disposed of. A device that has failed once is not tried again, so that
// each is tried twice.
class Making : public GpuScenario {
public:
    explicit Making(const std::optional<Faults>& faults = {})
        : GpuScenario(rotationText(), faults) {}

    void run() override { error_ = made(0); }
    void repeat() override {
        error_ = made(0);
        otherError_ = made(1);
    }
    std::string outcome() override {
        std::string words = answer(error_, "made");
        if (otherError_ && *otherError_ != error_)
            words += ", " + answer(*otherError_, "made") + " on another device";
        return words;
    }

    void close() override {
        for (const bool isMade : isMade_) {
            if (isMade) keepsPipeline();
        }
        GpuScenario::close();
    }

private:
    prSuiteError made(unsigned device) {
        const BadDevice bad(faults());
        const GpuInstance instance(side(), values(), device);
        isMade_[device] = isMade_[device] || instance.error() == 0;
        return instance.error();
    }

    prSuiteError error_ = 0;
    std::optional<prSuiteError> otherError_;
    bool isMade_[2] = {};
};

// An instance that is there renders a frame, on a device that has this LUT or another one.
class Rendering : public GpuScenario {
public:
    explicit Rendering(const std::string& text, const std::string& before = "",
                       const std::optional<Faults>& faults = {})
        : GpuScenario(text, faults), frame_(std::in_place, side(), text) {
        instance_.emplace(side(), values());
        if (!before.empty()) renderOnce(before);
    }

    void run() override {
        const BadDevice bad(faults());
        error_ = frame_->render(*instance_);
        // The device reports errors meanwhile.
        if (faults()) side().wait();
    }
    std::string outcome() override { return answer(error_, "no error") + ", " + frame_->picture(); }

    void close() override {
        instance_.reset();
        frame_.reset();
        keepsPipeline();
        if (!faults() || !faults()->noBuffer) keepsLut();
        GpuScenario::close();
    }

private:
    void renderOnce(const std::string& text) {
        effect().setBytes(kLut, widened(text));
        GpuInstance instance(side(), gpuValuesOf(effect()));
        EXPECT_EQ(frame_->render(instance), 0);
        frame_->picture();
    }

    std::optional<RenderedFrame> frame_;
    std::optional<GpuInstance> instance_;
    prSuiteError error_ = 0;
};

// An instance is made, renders two frames and is disposed of.
class Life : public GpuScenario {
public:
    explicit Life(const std::string& text) : GpuScenario(text) {
        for (auto& frame : frames_)
            frame.emplace(side(), text);
    }

    void run() override {
        GpuInstance instance(side(), values());
        answers_ = {instance.error()};
        for (auto& frame : frames_) {
            if (instance.error() == 0) answers_.push_back(frame->render(instance));
        }
    }
    std::string outcome() override {
        std::string words = answer(answers_[0], "made");
        for (std::size_t i = 1; i < answers_.size(); ++i)
            words += ", " + answer(answers_[i], frames_[i - 1]->picture());
        return words;
    }

    void close() override {
        for (auto& frame : frames_)
            frame.reset();
        if (answers_[0] == 0) {
            keepsPipeline();
            keepsLut();
        }
        GpuScenario::close();
    }

private:
    std::optional<RenderedFrame> frames_[2];
    std::vector<prSuiteError> answers_;
};

TEST(GpuFaults, ofMakingAnInstance) {
    const Outcomes fails = {"fails"};
    const Outcomes forGood = {"fails, made on another device"};
    expectGpu(scenario<Making>(), Expected("made")
                                      .failed(kNew, fails)
                                      .failed(kSuite, {"made", "fails"})
                                      .failed(kNoTable, {"made", "fails"})
                                      .failed(kGpuCall, {"made", "fails"})
                                      .failed(kLibrary, fails)
                                      .failed(kFunction, fails)
                                      .failed(kPipeline, fails)
                                      .repeated(kLibrary, forGood)
                                      .repeated(kFunction, forGood)
                                      .repeated(kPipeline, forGood)
                                      .harmless(kLogKinds));
}

// All other kinds of calls.
Expected alwaysFailing(const std::string& words) {
    return Expected(words).harmless({kNew, kGpuCall, kOpen, kWrite, kClose});
}

TEST(GpuFaults, ofMakingAnInstanceOnABadDevice) {
    for (const auto fault : {&Faults::noLibrary, &Faults::noFunction, &Faults::noPipeline})
        expectGpu(scenario<Making>(faultOf(fault)),
                  alwaysFailing("fails").harmless({kSuite, kNoTable}), hostKinds());
}

// Without the Amount there is a copy, without a format half floats are written.
Expected rendered(const Outcomes& hostFailures) {
    const Outcomes fails = {"fails, untouched"};
    return Expected("no error, right")
        .failed(kNew, fails)
        .failed(kGpuCall, hostFailures)
        .failed(kBuffer, fails)
        .failed(kCommands, fails)
        .failed(kEncoder, fails)
        .failed(kExecution, {"no error, untouched"})
        .harmless(kLogKinds)
        // The identity LUT.
        .keepsOther({kGpuCall});
}

const Outcomes kLutHostFailures = {"fails, untouched", "no error, copy", "no error, other picture"};

TEST(GpuFaults, ofARender) {
    expectGpu(scenario<Rendering>(rotationText()), rendered(kLutHostFailures));
}

TEST(GpuFaults, ofARenderWithAnotherLut) {
    expectGpu(scenario<Rendering>(rotationText(), scatteredText(3, 1)), rendered(kLutHostFailures));
}

TEST(GpuFaults, ofARenderOfThePattern) {
    expectGpu(scenario<Rendering>("TWLUTP 3"),
              rendered({"fails, untouched", "no error, right", "no error, other picture"}));
}

TEST(GpuFaults, ofARenderThatFails) {
    for (const auto fault : {&Faults::noBuffer, &Faults::noCommandBuffer, &Faults::noEncoder})
        expectGpu(scenario<Rendering>(rotationText(), "", faultOf(fault)),
                  alwaysFailing("fails, untouched").keepsOther({kGpuCall}), hostKinds());
}

TEST(GpuFaults, ofARenderThatFailsLater) {
    expectGpu(scenario<Rendering>(rotationText(), "", faultOf(&Faults::failExecution)),
              Expected("no error, untouched")
                  .failed(kNew, {"fails, untouched", "no error, untouched"})
                  .failed(kGpuCall, {"fails, untouched", "no error, untouched"})
                  .harmless(kLogKinds)
                  .keepsOther({kGpuCall}),
              hostKinds());
}

TEST(GpuFaults, ofAWholeLife) {
    const Outcomes notMade = {"fails"};
    const Outcomes anySuite = {"fails", "made, right, right"};
    const Outcomes oneLost = {"made, fails, right", "made, right, fails"};
    // Without the LUT or an Amount frames are copied, without a format taken for half floats.
    const Outcomes host = {"fails",
                           "made, copy, copy",
                           "made, copy, right",
                           "made, right, copy",
                           "made, fails, right",
                           "made, right, fails",
                           "made, other picture, right",
                           "made, right, other picture"};
    expectGpu(scenario<Life>(rotationText()),
              Expected("made, right, right")
                  .failed(kNew, {"fails", "made, fails, right"})
                  .failed(kSuite, anySuite)
                  .failed(kNoTable, anySuite)
                  .failed(kGpuCall, host)
                  .failed(kLibrary, notMade)
                  .failed(kFunction, notMade)
                  .failed(kPipeline, notMade)
                  .failed(kBuffer, {"made, fails, right"})
                  .failed(kCommands, oneLost)
                  .failed(kEncoder, oneLost)
                  .failed(kExecution, {"made, untouched, right", "made, right, untouched"})
                  .repeated(kLibrary, notMade)
                  .repeated(kFunction, notMade)
                  .repeated(kPipeline, notMade)
                  .harmless(kLogKinds)
                  .keepsOther({kGpuCall, kLibrary, kFunction, kPipeline}));
}

}  // namespace
}  // namespace faults
