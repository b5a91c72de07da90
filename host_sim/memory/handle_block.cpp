#include "host_sim/memory/handle_block.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "host_sim/values/guarded.h"

namespace host_sim {
namespace {

constexpr std::size_t kMargin = 64;        // canary bytes on each side; keeps 16-byte alignment
constexpr std::uint8_t kFreshByte = 0xA7;  // what the effect did not fill in shows

bool allCanaries(const std::uint8_t* from) {
    return std::all_of(from, from + kMargin, [](std::uint8_t byte) { return byte == kCanary; });
}

}  // namespace

HandleBlock::HandleBlock(int handleNumber, std::size_t bytes, std::string when)
    : number(handleNumber), made(std::move(when)) {
    move(bytes);
}

void HandleBlock::move(std::size_t bytes) {
    auto memory = std::make_unique_for_overwrite<std::uint8_t[]>(bytes + 2 * kMargin);
    std::uint8_t* block = memory.get() + kMargin;
    std::fill_n(memory.get(), kMargin, kCanary);
    std::fill_n(block, bytes, kFreshByte);
    std::fill_n(block + bytes, kMargin, kCanary);
    if (memory_) std::memcpy(block, memory_.get() + kMargin, std::min(size, bytes));
    memory_ = std::move(memory);
    size = bytes;
    master = reinterpret_cast<char*>(block);
}

void HandleBlock::free() {
    memory_.reset();
    master = nullptr;
    effectLocks.clear();
}

bool HandleBlock::isIntact() const {
    return allCanaries(memory_.get()) && allCanaries(memory_.get() + kMargin + size);
}

std::string HandleBlock::describe() const {
    return "handle " + std::to_string(number) + " (" + std::to_string(size) + " bytes, made " +
           made + ")";
}

}  // namespace host_sim
