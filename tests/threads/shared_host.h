// One run of the host, with everything that the threads share.
#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host_sim/gpu_side.h"
#include "host_sim/host.h"
#include "tests/support/held_lock.h"
#include "tests/support/stand_in_dialogs.h"
#include "tests/support/temp_folder.h"
#include "tests/threads/inputs.h"
#include "tests/threads/tally.h"

namespace stress {

// An applied effect and what its parameters hold.
struct Effect {
    host_sim::Instance* instance = nullptr;
    const Look* look = nullptr;
    std::size_t percent = 0;  // index of kPercents

    // Puts the two into the instance.
    void set() const;
};

// The host's devices.
enum Device : unsigned { kFirst, kSecond, kOpenCL, kTooWeak };
inline constexpr unsigned kDevices = 4;

// Premiere Pro, with a home of its own and an effect for each look, whose values stay as they are.
//
// Threads: built and ended by one; between that, workers of any thread use what is in it.
class SharedHost {
public:
    // With `gpuFails` the devices take work and fail at it later.
    SharedHost(const Inputs& inputs, bool gpuFails);
    ~SharedHost();
    SharedHost(const SharedHost&) = delete;
    SharedHost& operator=(const SharedHost&) = delete;

    const Inputs& inputs() const { return inputs_; }
    host_sim::Host& host() { return *host_; }
    host_sim::GpuSide& gpu() { return *gpu_; }
    bool gpuFails() const { return gpuFails_; }
    const std::vector<Effect>& effects() const { return effects_; }
    std::string requestFile() const { return home_.dataFile("edit-request.json"); }
    std::string lutFolder() const { return home_ / "Documents/Tintwell LUTs"; }
    // Held by a worker that presses "Edit LUT" and reads the request: there is one request file,
    // and one user at a time.
    std::mutex& requestMutex() { return requestMutex_; }
    // What the user picks in the calling thread's next dialog.
    static void pick(const std::string& path);
    // Fails the test when the calling thread holds a lock of the effect's.
    void expectNoLock(const char* when) const;

    // Once all workers are through: closes the host, fails the test for whatever is left or is not
    // as their tallies say, and returns their sum with the host's own count of commands.
    Tally finish(const std::vector<Tally>& workers);

private:
    void checkLog(const Tally& tally) const;

    const Inputs& inputs_;
    bool gpuFails_;
    twtest::TempHome home_;
    std::unique_ptr<host_sim::Host> host_;
    std::unique_ptr<host_sim::GpuSide> gpu_;
    std::vector<Effect> effects_;
    std::mutex requestMutex_;
    twtest::StandInDialogs* dialogs_ = nullptr;
    decltype(&tintwell_held_lock) heldLock_ = nullptr;
};

}  // namespace stress
