// The kinds of calls that a host makes, from a host that is never closed: its process ends first.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "host_sim/host.h"
#include "tests/support/stand_in_dialogs.h"

namespace quitting {

// A host that has applied effects with a LUT. The home is the caller's.
class OpenSession {
public:
    explicit OpenSession(const host_sim::Personality& personality);

    host_sim::Host& host() { return host_; }
    host_sim::Instance& apply();
    host_sim::ArbitraryCalls data();

    // Called while the open panel is open, by the thread of the command.
    std::function<void()> inDialog = [] {};

private:
    host_sim::Host host_;
    twtest::StandInDialogs& dialogs_;
    std::string cubeFile_;
};

// One kind of call. Its answers are checked; `round` makes values and log lines, and the lengths of
// those, differ from the last time.
struct Kind {
    const char* name;
    const host_sim::Personality& (*personality)();
    void (*call)(OpenSession& session, host_sim::Instance& effect, int round);
};

std::ostream& operator<<(std::ostream& out, const Kind& kind);

const std::vector<Kind>& kinds();
// Two of them.
const Kind& framesOfFloats();
const Kind& pressesOfTheLutButton();

}  // namespace quitting
