#include "tests/faults/effect_scenario.h"

#include <gtest/gtest.h>

#include "tests/support/effect_log.h"
#include "tests/support/failing_calls.h"
#include "tests/support/stand_in_module.h"

namespace faults {
namespace {

host_sim::Instance& applied(host_sim::Host& host, const Bytes& value) {
    host.start();
    host_sim::Instance& effect = host.apply();
    effect.setBytes(kLut, value);
    return effect;
}

}  // namespace

HostScenario::HostScenario(const host_sim::Personality& personality) : personality_(personality) {
    host_.emplace(TINTWELL_MODULE, personality_);
    twtest::watchCallsOf(host_->module().symbol("EffectMain"));
}

void HostScenario::reopen() {
    EXPECT_EQ(host_->close(), Lines());
    host_.emplace(TINTWELL_MODULE, personality_);
}

void HostScenario::close() {
    EXPECT_EQ(host_->close(), Lines());
    host_.reset();
    expectWholeLines();
}

void HostScenario::expectWholeLines() const {
    const std::string log = twtest::readFile(logFile());
    EXPECT_TRUE(log.empty() || log.back() == '\n') << log;
    for (const std::string& line : twtest::readLog(logFile()))
        EXPECT_TRUE(!line.empty() && !line.starts_with(twtest::kNoStamp)) << line;
}

EffectScenario::EffectScenario(const Bytes& value, const host_sim::Personality& personality)
    : HostScenario(personality),
      effect_(applied(host(), value)),
      dialogs_(twtest::dialogsOf(host().module())) {}

std::string answered(PF_Err error, const std::string& word) {
    return error == PF_Err_NONE ? word : "error " + std::to_string(error);
}

void expectEffect(const Begin& begin, const Expected& expected) {
    // Loaded once, so that the children need not; nothing of it is called here.
    const host_sim::Module module(TINTWELL_MODULE);
    failInTurn(hostKinds(), begin, expected);
}

}  // namespace faults
