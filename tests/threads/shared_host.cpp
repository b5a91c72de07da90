#include "tests/threads/shared_host.h"

#include <gtest/gtest.h>

#include "software_metal/control.h"
#include "tests/software_metal/settled.h"
#include "tests/support/effect_log.h"
#include "tests/support/stand_in_module.h"

namespace stress {
namespace {

using twtest::kAmount;
using twtest::kLut;

thread_local std::string picked;

host_sim::Request requestOf(const host_sim::CallRecord& call) {
    host_sim::Request request;
    request.command = call.command;
    request.selector = call.selector;
    return request;
}

// From the host's books: every command, and the log lines of the data callbacks.
Tally accountOf(const std::vector<host_sim::CallRecord>& calls) {
    Tally tally;
    for (const host_sim::CallRecord& call : calls) {
        const std::string name = host_sim::describeRequest(requestOf(call));
        tally.did(name);
        if (call.command != PF_Cmd_ARBITRARY_CALLBACK) continue;
        const std::string line = "Arb " + name.substr(name.rfind(' ') + 1);
        if (call.selector > PF_Arbitrary_COMPARE_FUNC) {
            tally.logs(line);
        } else {
            tally.mayLog(line);  // the first ones of the process
        }
    }
    return tally;
}

}  // namespace

void Effect::set() const {
    instance->setSlider(kAmount, kPercents[percent]);
    if (look->bytes.empty()) {
        instance->setNull(kLut);
    } else {
        instance->setBytes(kLut, look->bytes);
    }
}

SharedHost::SharedHost(const Inputs& inputs, bool gpuFails)
    : inputs_(inputs),
      gpuFails_(gpuFails),
      host_(std::make_unique<host_sim::Host>(TINTWELL_MODULE, host_sim::premierePro())) {
    host_->start();
    dialogs_ = &twtest::dialogsOf(host_->module());
    heldLock_ = twtest::heldLockOf(host_->module());
    dialogs_->pick = [this] {
        expectNoLock("while a dialog is open");
        return picked;
    };
    host_->watchCallbacks([this] { expectNoLock("while the host is called"); });

    software_metal::Faults faults;
    faults.failExecution = gpuFails;
    software_metal::setFaults(faults);
    gpu_ = std::make_unique<host_sim::GpuSide>(
        *host_,
        std::vector<host_sim::GpuDeviceSettings>{
            {}, {}, {.framework = PrGPUDeviceFramework_OpenCL}, {.meetsRequirements = false}});
    gpu_->enter();
    for (const Look& look : inputs.looks()) {
        const Effect effect{&host_->apply(), &look, effects_.size() % kPercents.size()};
        effect.set();
        effects_.push_back(effect);
    }
}

SharedHost::~SharedHost() {
    dialogs_->pick = nullptr;
    software_metal::setFaults({});
}

void SharedHost::pick(const std::string& path) {
    picked = path;
}

void SharedHost::expectNoLock(const char* when) const {
    const char* name = heldLock_();
    EXPECT_EQ(name, nullptr) << "The lock \"" << name << "\" is held " << when;
}

Tally SharedHost::finish(const std::vector<Tally>& workers) {
    const host_sim::GpuMemory& memory = gpu_->memory();
    EXPECT_EQ(memory.allocated(), memory.disposed());
    gpu_.reset();
    EXPECT_EQ(host_->close(), std::vector<std::string>());
    EXPECT_EQ(software_metal::takeMisuse(), "");
    // Two devices keep their pipeline, its function and one LUT.
    EXPECT_EQ(twtest::settledLiveObjects(), 6);

    Tally sum = accountOf(host_->books().calls());
    sum.logs("GlobalSetup build 11 host=PrMr api=13.4");
    for (const Tally& worker : workers)
        sum += worker;
    checkLog(sum);
    EXPECT_EQ(sum.compareAlerts(dialogs_->alerts), std::vector<std::string>());
    dialogs_->alerts.clear();
    dialogs_->folders.clear();
    return sum;
}

void SharedHost::checkLog(const Tally& tally) const {
    EXPECT_TRUE(twtest::readFile(home_.dataFile("effect.log")).ends_with("\n"));
    EXPECT_EQ(tally.compareLog(twtest::logLines(home_)), std::vector<std::string>());
}

}  // namespace stress
