// Splits the rows of a picture over short-lived threads. Internal to the engine.
#pragma once

#include <functional>

namespace tw {

inline constexpr int kMostRowThreads = 32;

// How `rows` rows are split: at most 32 ranges, `threads` of them, of `chunk` rows, at least 16. As
// `chunk` is rounded up, the last ranges may be shorter (of 100 rows on 8 threads the last one has
// 15) or empty. threads 1 means the calling thread alone, 0 that there is nothing to do.
struct RowSplit {
    int threads;
    int chunk;
};

// hardwareThreads: as the platform reports it, 0 when it does not know.
RowSplit splitRows(int rows, unsigned hardwareThreads);

// Calls work(first, end) for ranges that together cover rows 0 .. rows - 1 once each, the first of
// them on the calling thread and each other one on a thread of its own, and returns when all are
// done. A range whose thread cannot be started is done on the calling thread, so the rows are
// always complete. `work` is called from several threads at once, must not throw and takes none of
// the plug-in's locks.
void parallelRows(int rows, const std::function<void(int, int)>& work);

// For tests and benchmarks: makes parallelRows believe in `count` hardware threads; 0 asks the
// platform again. Threads: any.
void setHardwareThreads(unsigned count);

}  // namespace tw
