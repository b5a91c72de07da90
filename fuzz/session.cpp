// Plays sessions of a host with the whole effect module, as random as the bytes they are read from.
#include <cstdio>

#include "fuzz/session/play.h"

namespace {

// Told at the end: a session is many commands, and far slower than other targets' inputs.
struct Played {
    std::size_t commands = 0;

    ~Played() { std::fprintf(stderr, "stat::host_commands: %zu\n", commands); }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    static Played played;
    played.commands += session_fuzz::playSession(bytes, size);
    return 0;
}
