// A session in progress: the simulated host, what it holds, and what all of it must be.
#pragma once

#include <list>
#include <memory>
#include <string>
#include <vector>

#include "effect/params.h"
#include "fuzz/session/reference.h"
#include "host_sim/host.h"
#include "tests/support/stand_in_dialogs.h"

namespace session_fuzz {

using tw_effect::kParamAmount;
using tw_effect::kParamEditButton;
using tw_effect::kParamLut;
using tw_effect::kParamLutButton;

inline constexpr std::size_t kMostInstances = 4;
inline constexpr std::size_t kMostHeld = 8;

// An applied effect, and its values as they must be.
struct Applied {
    host_sim::Instance* instance = nullptr;
    Value lut;
    double amount = 100.0;
    std::string label = "Change LUT";
};

// A value that the host holds beside its instances.
struct Held {
    PF_ArbitraryH handle = nullptr;
    Value value;
};

class SessionState {
public:
    explicit SessionState(const host_sim::Personality& personality);
    // Disposes of everything and closes the host.
    void close();

    // Every instance's value, every held one, and a null handle; chosen by the record.
    Held choose(Record& record) const;
    // Null when there is none.
    Applied* chooseInstance(Record& record);
    bool isPremiere() const { return isPremiere_; }
    // On behalf of no instance.
    host_sim::ArbitraryCalls calls();

    // The effect has made `answer`; it must hold `value`. Held until the end or disposed of at once
    // when too many are held already.
    void hold(const host_sim::Answer<PF_ArbitraryH>& answer, const Value& value);
    // Files that are open by now may stay so.
    void keepDescriptors();
    // Whatever holds between two commands.
    void check();
    // In the command in progress the effect must have logged this.
    void requireLine(const std::string& message);

    host_sim::Host host;
    twtest::StandInDialogs& dialogs;
    Reference reference;
    Value defaultValue;
    std::list<Applied> applied;
    std::vector<Held> held;
    // The GPU side, once a command has used it: ends before the host closes.
    std::shared_ptr<void> gpu;
    int gpuCommands = 0;

private:
    void readLog();
    Value contents(PF_ArbitraryH handle);
    void checkValues();
    void checkHandles();
    void checkBooks();

    bool isPremiere_;
    std::string logged_;
    int nextDescriptor_;
};

}  // namespace session_fuzz
