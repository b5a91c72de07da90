// Scenarios: the effect, with stand-ins for the dialogs, in a simulated host and a home
// of its own.
#pragma once

#include <optional>
#include <string>

#include "host_sim/host.h"
#include "tests/faults/in_turn.h"
#include "tests/faults/kinds.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/stand_in_dialogs.h"
#include "tests/support/texts.h"

namespace faults {

using twtest::Bytes;
using twtest::kEditButton;
using twtest::kLut;
using twtest::kLutButton;
using twtest::Lines;

// A host that has loaded the effect and has called nothing yet.
class HostScenario : public Scenario {
public:
    explicit HostScenario(const host_sim::Personality& personality);

    void close() override;

protected:
    host_sim::Host& host() { return *host_; }
    // Closes the host and opens another one.
    void reopen();
    std::string logFile() const { return home_.dataFile("effect.log"); }

    const twtest::TempHome home_;

private:
    void expectWholeLines() const;

    host_sim::Personality personality_;
    std::optional<host_sim::Host> host_;
};

// One applied effect that holds a LUT.
class EffectScenario : public HostScenario {
public:
    // The value is put there by the host, so that the effect has not seen it yet.
    explicit EffectScenario(const Bytes& value,
                            const host_sim::Personality& personality = host_sim::premierePro());

protected:
    host_sim::Instance& effect() { return effect_; }
    host_sim::ArbitraryCalls calls() { return host().arbitraryCalls(kLut); }
    twtest::StandInDialogs& dialogs() const { return dialogs_; }
    PF_ArbitraryH value() { return effect().arbitrary(kLut); }
    Bytes bytes() { return host().handles().contents(value()); }

private:
    host_sim::Instance& effect_;
    twtest::StandInDialogs& dialogs_;
};

// "error 512", or the word.
std::string answered(PF_Err error, const std::string& word);

void expectEffect(const Begin& begin, const Expected& expected);

}  // namespace faults
