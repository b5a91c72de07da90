// Runs sessions of a host with the whole effect module, as random as the bytes they are read from.
#include <cstdio>

#include "fuzz/session/run_session.h"

namespace {

// Printed at the end: a session is many commands, and far slower than other targets' inputs.
struct Totals {
    std::size_t commands = 0;

    ~Totals() { std::fprintf(stderr, "stat::host_commands: %zu\n", commands); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static Totals totals;
    totals.commands += session_fuzz::runSession(bytes, size);
    return 0;
}
