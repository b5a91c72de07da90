// Frames through the effect's GPU filter.
#pragma once

#include <memory>

#include "host_sim/host.h"

namespace program {

// The GPU side of a Premiere Pro host, on one device. Ends before the host.
//
// Threads: any; they wait for each other.
class GpuSession {
public:
    // Throws Failure when the program has no device, and SimError when the module has no filter.
    explicit GpuSession(host_sim::Host& host);
    ~GpuSession();
    GpuSession(const GpuSession&) = delete;
    GpuSession& operator=(const GpuSession&) = delete;

    // A 32-bit float frame. Where the filter refuses, the effect renders on the CPU, as in the
    // host, and one line on standard error says so. Returns the effect's error.
    PF_Err render(host_sim::Instance& effect, const host_sim::Frame& input,
                  host_sim::Frame& output);

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace program
