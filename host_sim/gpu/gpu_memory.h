// The blocks of the simulated memory manager.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "host_api/host_api.h"
#include "host_sim/values/books.h"

namespace host_sim {

// A block that is given back twice, or was never given out, is a problem.
//
// Threads: every function from any thread. Lock order: before that of the books.
class GpuMemory {
public:
    explicit GpuMemory(Books& books) : books_(books) {}

    PrMemoryPtr allocate(const std::vector<std::uint8_t>& bytes);
    csSDK_uint32 size(PrMemoryPtr block);
    void dispose(PrMemoryPtr block);

    int allocated() const;
    int disposed() const;
    void reportLeftovers();

private:
    struct Block {
        std::unique_ptr<char[]> bytes;
        csSDK_uint32 size = 0;
    };

    Books& books_;
    mutable std::mutex mutex_;
    std::map<PrMemoryPtr, Block> live_;
    int allocated_ = 0;
    int disposed_ = 0;
};

}  // namespace host_sim
