#include "tintwell_host/jobs/memory_budget.h"

#include <algorithm>

namespace program {

MemoryBudget::Share::Share(MemoryBudget& budget, std::int64_t bytes)
    : budget_(budget), bytes_(std::min(bytes, budget.total_)) {
    std::unique_lock lock(budget_.mutex_);
    budget_.given_.wait(lock, [this] { return budget_.free_ >= bytes_; });
    budget_.free_ -= bytes_;
}

MemoryBudget::Share::~Share() {
    {
        const std::lock_guard lock(budget_.mutex_);
        budget_.free_ += bytes_;
    }
    budget_.given_.notify_all();
}

}  // namespace program
