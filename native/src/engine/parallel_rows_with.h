// The splitting of rows over threads with the way to start a thread given: std::thread's in what is
// shipped, one that fails in tests. Internal to the engine.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <thread>

#include "native/src/engine/parallel_rows.h"
#include "native/src/mutex.h"

namespace tw {

// The threads of one call; joins what was started, in order, on every way out. Holds them in place,
// so that nothing has to be allocated before the first one runs.
class Workers {
public:
    Workers() = default;
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    ~Workers() {
        for (std::size_t i = 0; i < count_; ++i)
            threads_[i].join();
    }

    // False when the system gives no thread (or no memory for one).
    template <typename StartThread, typename Task>
    bool start(const StartThread& startThread, const Task& task) {
        try {
            threads_[count_] = startThread(task);
        } catch (const std::exception&) {
            return false;
        }
        ++count_;
        return true;
    }

private:
    std::array<std::thread, kMostRowThreads - 1> threads_;
    std::size_t count_ = 0;
};

// As parallelRows. startThread(task) gives a std::thread that calls the task, or throws.
template <typename StartThread>
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

}  // namespace tw
