#include "native/src/parallel_rows.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <exception>
#include <utility>

#include "native/src/mutex.h"

namespace tw {
namespace {

constexpr int kMaxThreads = 32;
constexpr int kUnknownThreads = 4;
constexpr int kMinRowsPerThread = 16;

std::atomic<unsigned> forcedHardwareThreads{0};

unsigned hardwareThreads() {
    const unsigned forced = forcedHardwareThreads.load(std::memory_order_relaxed);
    return forced ? forced : std::thread::hardware_concurrency();
}

// The threads of one call; joins what was started, in order, on every way out. Holds them in place,
// so that nothing has to be allocated before the first one runs.
class Workers {
public:
    Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers() {
        for (int i = 0; i < count_; ++i)
            threads_[static_cast<std::size_t>(i)].join();
    }

    // False when the system gives no thread (or no memory for one).
    bool start(const StartThread& startThread, std::function<void()> task) {
        try {
            threads_[static_cast<std::size_t>(count_)] = startThread(std::move(task));
        } catch (const std::exception&) {
            return false;
        }
        ++count_;
        return true;
    }

private:
    std::array<std::thread, kMaxThreads - 1> threads_;
    int count_ = 0;
};

}  // namespace

RowSplit splitRows(int rows, unsigned hardwareThreads) {
    if (rows <= 0) return {0, 0};
    const int known = static_cast<int>(std::min(hardwareThreads, unsigned{kMaxThreads}));
    const int cap = known == 0 ? kUnknownThreads : known;
    const int threads = std::min(rows / kMinRowsPerThread, cap);
    if (threads < 2) return {1, rows};
    return {threads, rows / threads + (rows % threads != 0)};
}

void parallelRowsWith(int rows, unsigned hardwareThreads, const StartThread& startThread,
                      const std::function<void(int, int)>& work) {
    const RowSplit split = splitRows(rows, hardwareThreads);
    if (split.threads == 0) return;
    const auto run = [&work](int first, int end) {
        const LockFreeScope scope("rows of a picture");
        work(first, end);
    };
    Workers workers;
    // Ranges without a thread of their own, from this row on, stay with the calling thread.
    int unstarted = rows;
    for (int i = 1; i < split.threads; ++i) {
        // Rounding up may leave the last ranges empty. Neither product nor sum may pass INT_MAX.
        const std::int64_t start = std::int64_t{i} * split.chunk;
        if (start >= rows) break;
        const int first = static_cast<int>(start);
        const int end = first + std::min(split.chunk, rows - first);
        if (!workers.start(startThread, [&run, first, end] { run(first, end); })) {
            unstarted = first;
            break;
        }
    }
    run(0, std::min(split.chunk, rows));
    if (unstarted < rows) run(unstarted, rows);
}

void parallelRows(int rows, const std::function<void(int, int)>& work) {
    parallelRowsWith(
        rows, hardwareThreads(),
        [](std::function<void()> task) { return std::thread(std::move(task)); }, work);
}

void setHardwareThreads(unsigned count) {
    forcedHardwareThreads.store(count, std::memory_order_relaxed);
}

}  // namespace tw
