#include "host_sim/memory/handle_memory.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host_sim/memory/handle_block.h"
#include "host_sim/values/call_scope.h"

namespace host_sim {
namespace {

// The lock that an unlock by the calling thread undoes: its own last one, else the last of all.
std::vector<EffectLock>::iterator lockToUndo(std::vector<EffectLock>& locks) {
    const auto mine = [](const EffectLock& lock) {
        return lock.thread == std::this_thread::get_id();
    };
    const auto found = std::find_if(locks.rbegin(), locks.rend(), mine);
    return found == locks.rend() ? locks.end() - 1 : found.base() - 1;
}

std::string lockedWhen(const HandleBlock& block) {
    return "locked " + std::to_string(block.effectLocks.size()) + " time(s), first " +
           block.effectLocks.front().when;
}

}  // namespace

HandleMemory::HandleMemory(Books& books, Refusals& refusals) : books_(books), refusals_(refusals) {}

HandleMemory::~HandleMemory() = default;

PF_Handle HandleMemory::allocate(A_u_longlong size) {
    if (refusals_.answer(Refusal::kAllocation) != 0) return nullptr;
    const std::lock_guard lock(mutex_);
    ++counts_.allocations;
    return add(size).handle();
}

void* HandleMemory::lock(PF_Handle handle) {
    const std::lock_guard guard(mutex_);
    HandleBlock* block = find(handle, "host_lock_handle");
    if (block == nullptr) return nullptr;
    if (refusals_.answer(Refusal::kLock) != 0) {
        ++counts_.refusedLocks;
        ++refusedLocks_[std::this_thread::get_id()][handle];
        return nullptr;
    }
    ++counts_.locks;
    block->effectLocks.push_back({std::this_thread::get_id(), CallScope::describeCurrent()});
    return block->master;
}

void HandleMemory::unlock(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    if (answersRefusal(handle)) return;
    HandleBlock* block = find(handle, "host_unlock_handle");
    if (block == nullptr) return;
    checkCanaries(*block, "host_unlock_handle");
    if (block->effectLocks.empty()) {
        books_.problem("The " + block->describe() + " was unlocked more often than locked");
        return;
    }
    block->effectLocks.erase(lockToUndo(block->effectLocks));
}

void HandleMemory::dispose(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    HandleBlock* block = find(handle, "host_dispose_handle");
    if (block == nullptr) return;
    checkCanaries(*block, "host_dispose_handle");
    if (!block->effectLocks.empty()) {
        books_.problem("The " + block->describe() + " was disposed of while " + lockedWhen(*block));
    }
    end(*block);
}

A_u_longlong HandleMemory::size(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    const HandleBlock* block = find(handle, "host_get_handle_size");
    return block == nullptr ? 0 : block->size;
}

PF_Err HandleMemory::resize(A_u_longlong size, PF_Handle* handle) {
    const std::lock_guard lock(mutex_);
    HandleBlock* block = find(handle == nullptr ? nullptr : *handle, "host_resize_handle");
    if (block == nullptr) return PF_Err_BAD_CALLBACK_PARAM;
    checkCanaries(*block, "host_resize_handle");
    if (!block->effectLocks.empty()) {
        books_.problem("The " + block->describe() + " was resized while " + lockedWhen(*block));
    }
    if (refusals_.answer(Refusal::kResize) != 0) return PF_Err_OUT_OF_MEMORY;
    ++counts_.resizes;
    block->move(size);
    if (refusals_.replacesHandles()) replace(*block, handle);
    return PF_Err_NONE;
}

PF_Handle HandleMemory::hostAllocate(const std::vector<std::uint8_t>& bytes) {
    const std::lock_guard lock(mutex_);
    HandleBlock& block = add(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.master);
    return block.handle();
}

void HandleMemory::hostDispose(PF_Handle handle) {
    const std::lock_guard lock(mutex_);
    if (HandleBlock* block = findLive(handle)) end(*block);
}

PF_Handle HandleMemory::latest(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    HandleBlock* block = findLive(handle);
    return block == nullptr ? handle : block->handle();
}

bool HandleMemory::isLive(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const HandleBlock* block = findLive(handle);
    return block != nullptr && &block->master == handle;
}

std::size_t HandleMemory::effectLocks(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const HandleBlock* block = findLive(handle);
    return block == nullptr ? 0 : block->effectLocks.size();
}

std::vector<std::uint8_t> HandleMemory::contents(PF_Handle handle) const {
    const std::lock_guard lock(mutex_);
    const HandleBlock* block = findLive(handle);
    if (block == nullptr) return {};
    return {block->master, block->master + block->size};
}

void HandleMemory::forgetRefusedLocks() {
    const std::lock_guard lock(mutex_);
    refusedLocks_.erase(std::this_thread::get_id());
}

std::vector<const HandleBlock*> HandleMemory::liveBlocks() const {
    std::vector<const HandleBlock*> live;
    for (const auto& [handle, block] : blocks_) {
        if (block->gone.empty()) live.push_back(block.get());
    }
    std::sort(live.begin(), live.end(),
              [](const HandleBlock* a, const HandleBlock* b) { return a->number < b->number; });
    return live;
}

void HandleMemory::reportDamage(const HandleBlock& block) {
    if (!block.isIntact())
        books_.problemAtEnd("Bytes beside " + block.describe() + " were overwritten");
}

void HandleMemory::reportUnrest() {
    const std::lock_guard lock(mutex_);
    for (const HandleBlock* block : liveBlocks()) {
        reportDamage(*block);
        if (!block->effectLocks.empty())
            books_.problemAtEnd("The " + block->describe() + " is still " + lockedWhen(*block));
    }
}

void HandleMemory::reportLeftovers() {
    const std::lock_guard lock(mutex_);
    for (const HandleBlock* block : liveBlocks()) {
        reportDamage(*block);
        const bool locked = !block->effectLocks.empty();
        books_.problemAtEnd("The " + block->describe() + " was never disposed of" +
                            (locked ? ", and is " + lockedWhen(*block) : ""));
    }
}

HandleCounts HandleMemory::counts() const {
    const std::lock_guard lock(mutex_);
    return counts_;
}

HandleBlock* HandleMemory::find(PF_Handle handle, const char* callback) {
    const std::string given = std::string(callback) + " was given ";
    if (handle == nullptr) {
        books_.problem(given + "a null handle");
        return nullptr;
    }
    const auto found = blocks_.find(handle);
    if (found == blocks_.end()) {
        books_.problem(given + "a pointer that is no handle");
        return nullptr;
    }
    HandleBlock& block = *found->second;
    if (block.gone.empty()) return &block;
    books_.problem(given + block.describe() + ", which was " + block.gone);
    return nullptr;
}

HandleBlock* HandleMemory::findLive(PF_Handle handle) const {
    const auto found = blocks_.find(handle);
    if (found == blocks_.end()) return nullptr;
    HandleBlock* block = found->second.get();
    while (block->replacedBy != nullptr)
        block = block->replacedBy;
    return block->gone.empty() ? block : nullptr;
}

HandleBlock& HandleMemory::add(std::size_t size) {
    auto block = std::make_unique<HandleBlock>(nextNumber_++, size, CallScope::describeCurrent());
    HandleBlock& added = *block;
    blocks_[added.handle()] = std::move(block);
    ++counts_.live;
    return added;
}

bool HandleMemory::answersRefusal(PF_Handle handle) {
    const auto thread = refusedLocks_.find(std::this_thread::get_id());
    if (thread == refusedLocks_.end()) return false;
    const auto refused = thread->second.find(handle);
    if (refused == thread->second.end()) return false;
    if (--refused->second == 0) thread->second.erase(refused);
    ++counts_.unlocksAfterRefusal;
    return true;
}

void HandleMemory::checkCanaries(const HandleBlock& block, const char* callback) {
    if (block.isIntact()) return;
    books_.problem("Bytes beside " + block.describe() + " were overwritten, as seen in " +
                   callback);
}

void HandleMemory::replace(HandleBlock& block, PF_Handle* handle) {
    HandleBlock& fresh = add(block.size);
    --counts_.live;
    std::memcpy(fresh.master, block.master, block.size);
    fresh.effectLocks = block.effectLocks;
    block.gone = "replaced by a resize " + CallScope::describeCurrent();
    block.replacedBy = &fresh;
    block.free();
    *handle = fresh.handle();
}

void HandleMemory::end(HandleBlock& block) {
    block.gone = "disposed of " + CallScope::describeCurrent();
    block.free();
    ++counts_.disposals;
    --counts_.live;
}

}  // namespace host_sim
