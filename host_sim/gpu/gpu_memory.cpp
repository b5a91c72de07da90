#include "host_sim/gpu/gpu_memory.h"

#include <cstring>

namespace host_sim {

PrMemoryPtr GpuMemory::allocate(const std::vector<std::uint8_t>& bytes) {
    const std::lock_guard lock(mutex_);
    // At least one byte, so that every block has an address of its own.
    Block block{std::make_unique<char[]>(bytes.size() + 1),
                static_cast<csSDK_uint32>(bytes.size())};
    if (!bytes.empty()) std::memcpy(block.bytes.get(), bytes.data(), bytes.size());
    const PrMemoryPtr address = block.bytes.get();
    live_[address] = std::move(block);
    ++allocated_;
    return address;
}

csSDK_uint32 GpuMemory::size(PrMemoryPtr block) {
    const std::lock_guard lock(mutex_);
    const auto found = live_.find(block);
    if (found != live_.end()) return found->second.size;
    books_.problem("GetPtrSize was given an unknown block");
    return 0;
}

void GpuMemory::dispose(PrMemoryPtr block) {
    const std::lock_guard lock(mutex_);
    if (live_.erase(block) == 0) {
        books_.problem("PrDisposePtr was given an unknown block");
        return;
    }
    ++disposed_;
}

int GpuMemory::allocated() const {
    const std::lock_guard lock(mutex_);
    return allocated_;
}

int GpuMemory::disposed() const {
    const std::lock_guard lock(mutex_);
    return disposed_;
}

void GpuMemory::reportLeftovers() {
    const std::lock_guard lock(mutex_);
    if (live_.empty()) return;
    books_.problemAtEnd(std::to_string(live_.size()) + " block(s) of memory were not disposed of");
    live_.clear();
}

}  // namespace host_sim
