// The host's handles: blocks behind master pointers, with sizes, counted locks and canaries.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include "host_api/errors.h"
#include "host_sim/values/books.h"
#include "host_sim/values/refusals.h"

namespace host_sim {

struct HandleCounts {
    std::size_t live = 0;
    std::size_t allocations = 0;  // that succeeded
    std::size_t disposals = 0;
    std::size_t resizes = 0;              // that succeeded
    std::size_t locks = 0;                // the effect's, that succeeded
    std::size_t refusedLocks = 0;         // answered with null on demand
    std::size_t unlocksAfterRefusal = 0;  // answering one of those: legal
};

struct HandleBlock;

// Misuse goes into the books and is then survived as well as possible. Disposed handles stay known,
// so that a later use is told apart from a wild pointer; their blocks are really freed. Fresh bytes
// are not zero. Blocks are aligned to 16 bytes.
//
// Threads: every function from any thread. Lock order: before that of the books.
class HandleMemory {
public:
    HandleMemory(Books& books, Refusals& refusals);
    ~HandleMemory();
    HandleMemory(const HandleMemory&) = delete;
    HandleMemory& operator=(const HandleMemory&) = delete;

    // The effect's six callbacks.
    PF_Handle allocate(A_u_longlong size);
    void* lock(PF_Handle handle);
    void unlock(PF_Handle handle);
    void dispose(PF_Handle handle);
    A_u_longlong size(PF_Handle handle);
    // Always moves the block, and replaces the handle too where Refusals asks for it.
    PF_Err resize(A_u_longlong size, PF_Handle* handle);

    // The host's own dealings, which need no lock and are never refused. Null handles are taken and
    // nothing happens. No locks of the host are counted: they keep the effect from nothing.
    PF_Handle hostAllocate(const std::vector<std::uint8_t>& bytes);
    void hostDispose(PF_Handle handle);
    // What the handle is after replacements; itself otherwise.
    PF_Handle latest(PF_Handle handle) const;
    bool isLive(PF_Handle handle) const;
    // How many locks the effect holds on it now.
    std::size_t effectLocks(PF_Handle handle) const;
    // A copy of the block; empty for a handle that is not live.
    std::vector<std::uint8_t> contents(PF_Handle handle) const;

    // Called when the calling thread leaves its outermost command: refused locks need no answer.
    void forgetRefusedLocks();
    // Between commands: writes a problem for each lock the effect holds, each damaged canary.
    void reportUnrest();
    // Writes a problem for each live handle, each lock the effect left on one, each damaged canary.
    void reportLeftovers();
    HandleCounts counts() const;

private:
    HandleBlock* find(PF_Handle handle, const char* callback);
    HandleBlock* findLive(PF_Handle handle) const;
    HandleBlock& add(std::size_t size);
    bool answersRefusal(PF_Handle handle);
    void checkCanaries(const HandleBlock& block, const char* callback);
    void reportDamage(const HandleBlock& block);
    // The live ones in the order in which they were made.
    std::vector<const HandleBlock*> liveBlocks() const;
    void replace(HandleBlock& block, PF_Handle* handle);
    void end(HandleBlock& block);

    Books& books_;
    Refusals& refusals_;
    mutable std::mutex mutex_;
    std::unordered_map<PF_Handle, std::unique_ptr<HandleBlock>> blocks_;  // live and gone
    // Null answers that an unlock may still follow, by thread.
    std::map<std::thread::id, std::map<PF_Handle, int>> refusedLocks_;
    HandleCounts counts_;
    int nextNumber_ = 1;
};

}  // namespace host_sim
