// When the platform is asked how many threads it has.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "native/src/engine/parallel_rows.h"

namespace {

std::atomic<int> asked{0};

}  // namespace

// Stands in for the library's.
__attribute__((visibility("default"))) unsigned std::thread::hardware_concurrency() noexcept {
    ++asked;
    return 4;
}

namespace {

int rangesOf(int rows) {
    std::atomic<int> ranges{0};
    tw::parallelRows(rows, [&](int, int) { ++ranges; });
    return ranges;
}

TEST(ParallelRowsPlatform, isNotAskedForFewerThan32Rows) {
    EXPECT_EQ(0, rangesOf(0));
    EXPECT_EQ(1, rangesOf(1));
    EXPECT_EQ(1, rangesOf(31));
    EXPECT_EQ(0, asked);
}

TEST(ParallelRowsPlatform, isAskedOnceEachTimeFrom32RowsOn) {
    EXPECT_EQ(2, rangesOf(32));
    EXPECT_EQ(1, asked);
    EXPECT_EQ(4, rangesOf(64));
    EXPECT_EQ(2, asked);
}

}  // namespace
