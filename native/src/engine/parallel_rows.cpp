#include "native/src/engine/parallel_rows.h"

#include <algorithm>
#include <atomic>

#include "native/src/engine/parallel_rows_with.h"

namespace tw {
namespace {

constexpr int kUnknownThreads = 4;
constexpr int kMinRowsPerThread = 16;

std::atomic<unsigned> forcedHardwareThreads{0};

unsigned hardwareThreads() {
    const unsigned forced = forcedHardwareThreads.load(std::memory_order_relaxed);
    return forced ? forced : std::thread::hardware_concurrency();
}

}  // namespace

RowSplit splitRows(int rows, unsigned hardwareThreads) {
    if (rows <= 0) return {0, 0};
    const int known = static_cast<int>(std::min(hardwareThreads, unsigned{kMostRowThreads}));
    const int cap = known == 0 ? kUnknownThreads : known;
    const int threads = std::min(rows / kMinRowsPerThread, cap);
    if (threads < 2) return {1, rows};
    return {threads, rows / threads + (rows % threads != 0)};
}

void parallelRows(int rows, const std::function<void(int, int)>& work) {
    // Asking the platform takes 8 us, and fewer rows than these are never split.
    const unsigned threads = rows < 2 * kMinRowsPerThread ? 1 : hardwareThreads();
    parallelRowsWith(
        rows, threads, [](const auto& task) { return std::thread(task); }, work);
}

void setHardwareThreads(unsigned count) {
    forcedHardwareThreads.store(count, std::memory_order_relaxed);
}

}  // namespace tw
