// One handle of the host's memory.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "host_api/types.h"

namespace host_sim {

// A lock that the effect took and did not give back yet.
struct EffectLock {
    std::thread::id thread;
    std::string when;
};

// Guarded by the mutex of its HandleMemory.
struct HandleBlock {
    HandleBlock(int handleNumber, std::size_t bytes, std::string when);

    PF_Handle handle() { return &master; }
    // New memory of `bytes` bytes with the common contents; the old memory is freed.
    void move(std::size_t bytes);
    void free();
    bool isIntact() const;
    // "handle 3 (12 bytes, made during ...)".
    std::string describe() const;

    // The master pointer: its address is the handle, its value the block, null once it is gone.
    char* master = nullptr;
    int number;
    std::size_t size = 0;
    std::string made;
    std::string gone;                   // how it ended; empty while it is live
    HandleBlock* replacedBy = nullptr;  // by a resize
    std::vector<EffectLock> effectLocks;

private:
    std::unique_ptr<std::uint8_t[]> memory_;  // canaries, block, canaries
};

}  // namespace host_sim
