// The row split and the short-lived workers.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <latch>
#include <limits>
#include <mutex>
#include <new>
#include <set>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "native/src/engine/parallel_rows_with.h"

namespace {

using Range = std::pair<int, int>;

// Which rows were done by which thread.
class Ledger {
public:
    std::function<void(int, int)> work() {
        return [this](int first, int end) {
            const std::lock_guard<std::mutex> lock(mutex_);
            ranges_.push_back({first, end});
            threads_.push_back(std::this_thread::get_id());
        };
    }

    std::vector<Range> sortedRanges() const {
        std::vector<Range> sorted = ranges_;
        std::sort(sorted.begin(), sorted.end());
        return sorted;
    }

    // Ranges done on the calling thread.
    std::vector<Range> here() const {
        std::vector<Range> own;
        for (std::size_t i = 0; i < ranges_.size(); ++i) {
            if (threads_[i] == std::this_thread::get_id()) own.push_back(ranges_[i]);
        }
        std::sort(own.begin(), own.end());
        return own;
    }

    std::size_t threads() const {
        return std::set<std::thread::id>(threads_.begin(), threads_.end()).size();
    }

    // Every row once, none outside.
    ::testing::AssertionResult covers(int rows) const {
        int next = 0;
        for (const Range& range : sortedRanges()) {
            if (range.first != next || range.second <= range.first) {
                return ::testing::AssertionFailure() << "range " << range.first << " to "
                                                     << range.second << " after row " << next;
            }
            next = range.second;
        }
        if (next != rows)
            return ::testing::AssertionFailure() << "ends at row " << next << " of " << rows;
        return ::testing::AssertionSuccess();
    }

private:
    std::mutex mutex_;
    std::vector<Range> ranges_;
    std::vector<std::thread::id> threads_;
};

using StartThread = std::function<std::thread(const std::function<void()>&)>;

std::thread startThread(const std::function<void()>& body) {
    return std::thread(body);
}

TEST(SplitRows, followsTable) {
    struct Row {
        int rows;
        unsigned hardware;
        int threads, chunk;
    };
    constexpr int kMost = std::numeric_limits<int>::max();
    const Row table[] = {{0, 8, 0, 0},        {-1, 8, 0, 0},
                         {-1000, 8, 0, 0},    {-kMost - 1, 8, 0, 0},
                         {1, 8, 1, 1},        {15, 8, 1, 15},
                         {16, 8, 1, 16},      {31, 8, 1, 31},
                         {32, 8, 2, 16},      {33, 8, 2, 17},
                         {47, 8, 2, 24},      {48, 8, 3, 16},
                         {100, 8, 6, 17},     {127, 8, 7, 19},
                         {128, 8, 8, 16},     {1080, 8, 8, 135},
                         {1080, 1, 1, 1080},  {1080, 2, 2, 540},
                         {1080, 0, 4, 270},   {63, 0, 3, 21},
                         {1080, 31, 31, 35},  {1080, 32, 32, 34},
                         {1080, 33, 32, 34},  {1080, 4000000000U, 32, 34},
                         {545, 64, 32, 18},   {kMost, 32, 32, 67108864},
                         {kMost, 1, 1, kMost}};
    for (const Row& row : table) {
        const tw::RowSplit split = tw::splitRows(row.rows, row.hardware);
        EXPECT_EQ(row.threads, split.threads) << row.rows << " rows, " << row.hardware;
        EXPECT_EQ(row.chunk, split.chunk) << row.rows << " rows, " << row.hardware;
    }
}

TEST(ParallelRows, staysOnCallingThread_for31Rows) {
    tw::setHardwareThreads(8);
    Ledger ledger;
    tw::parallelRows(31, ledger.work());
    EXPECT_EQ((std::vector<Range>{{0, 31}}), ledger.here());
    EXPECT_EQ(1U, ledger.threads());
}

TEST(ParallelRows, usesTwoThreads_for32Rows) {
    tw::setHardwareThreads(8);
    Ledger ledger;
    tw::parallelRows(32, ledger.work());
    EXPECT_EQ((std::vector<Range>{{0, 16}, {16, 32}}), ledger.sortedRanges());
    EXPECT_EQ((std::vector<Range>{{0, 16}}), ledger.here());
    EXPECT_EQ(2U, ledger.threads());
}

TEST(ParallelRows, usesSixThreads_for100Rows) {
    tw::setHardwareThreads(8);
    Ledger ledger;
    tw::parallelRows(100, ledger.work());
    EXPECT_EQ((std::vector<Range>{{0, 17}, {17, 34}, {34, 51}, {51, 68}, {68, 85}, {85, 100}}),
              ledger.sortedRanges());
    EXPECT_EQ((std::vector<Range>{{0, 17}}), ledger.here());
    EXPECT_EQ(6U, ledger.threads());
}

TEST(ParallelRows, doesNothing_withoutRows) {
    for (const int rows : {0, -1, -16, -1000, std::numeric_limits<int>::min()}) {
        Ledger ledger;
        tw::parallelRows(rows, ledger.work());
        EXPECT_TRUE(ledger.sortedRanges().empty()) << rows << " rows";
    }
}

TEST(ParallelRows, coversEveryRowOnce_withPlatformsThreads) {
    tw::setHardwareThreads(0);
    for (int rows = 1; rows <= 300; rows += 13) {
        Ledger ledger;
        tw::parallelRows(rows, ledger.work());
        EXPECT_TRUE(ledger.covers(rows));
    }
}

TEST(ParallelRows, asksPlatformAgain_whenHookIsZero) {
    tw::setHardwareThreads(0);
    Ledger platform;
    tw::parallelRows(2048, platform.work());
    tw::setHardwareThreads(3);
    Ledger three;
    tw::parallelRows(2048, three.work());
    EXPECT_EQ(3U, three.sortedRanges().size());
    tw::setHardwareThreads(0);
    Ledger again;
    tw::parallelRows(2048, again.work());
    EXPECT_EQ(platform.sortedRanges(), again.sortedRanges());
    const tw::RowSplit split = tw::splitRows(2048, std::thread::hardware_concurrency());
    EXPECT_EQ(static_cast<std::size_t>(split.threads), again.sortedRanges().size());
}

TEST(ParallelRowsWith, startsNoThread_forEmptyLastRange) {
    Ledger ledger;
    int starts = 0;
    tw::parallelRowsWith(
        545, 32,
        [&](const std::function<void()>& body) {
            ++starts;
            return startThread(body);
        },
        ledger.work());
    EXPECT_EQ(30, starts);
    EXPECT_EQ(31U, ledger.sortedRanges().size());
    EXPECT_TRUE(ledger.covers(545));
}

TEST(ParallelRowsWith, startsNoThreadForNoRows_whenTheRangesEndExactly) {
    Ledger ledger;
    tw::parallelRowsWith(527, 32, startThread, ledger.work());
    EXPECT_EQ(31U, ledger.sortedRanges().size());
    EXPECT_TRUE(ledger.covers(527));
}

TEST(ParallelRowsWith, startsNoThread_belowTwoThreads) {
    for (const int rows : {0, -5, 1, 31}) {
        Ledger ledger;
        const StartThread never = [](const std::function<void()>& body) {
            ADD_FAILURE() << "a thread was started";
            return startThread(body);
        };
        tw::parallelRowsWith(rows, 8, never, ledger.work());
        EXPECT_TRUE(ledger.covers(std::max(rows, 0))) << rows << " rows";
    }
}

TEST(ParallelRowsWith, coversEveryRow_ofTheTallestPicture) {
    Ledger ledger;
    tw::parallelRowsWith(std::numeric_limits<int>::max(), 32, startThread, ledger.work());
    EXPECT_TRUE(ledger.covers(std::numeric_limits<int>::max()));
    EXPECT_EQ(32U, ledger.threads());
}

// All workers are at work at once with the caller, and none is left when the call returns.
TEST(ParallelRowsWith, joinsWorkers_beforeReturning) {
    std::latch all(6);
    std::atomic<int> finished = 0;
    tw::parallelRowsWith(100, 8, startThread, [&](int first, int) {
        all.arrive_and_wait();
        // The caller is done first.
        if (first != 0) std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ++finished;
    });
    EXPECT_EQ(6, finished);
}

// No row is lost when the system has no more threads.
TEST(ParallelRowsWith, doesRowsItself_whenNthStartThrows) {
    for (int failing = 1; failing <= 5; ++failing) {
        SCOPED_TRACE("start " + std::to_string(failing));
        Ledger ledger;
        int starts = 0;
        const StartThread start = [&](const std::function<void()>& body) {
            if (++starts == failing) {
                throw std::system_error(
                    std::make_error_code(std::errc::resource_unavailable_try_again));
            }
            return startThread(body);
        };
        EXPECT_NO_THROW(tw::parallelRowsWith(100, 8, start, ledger.work()));
        EXPECT_TRUE(ledger.covers(100));
        const std::vector<Range> here = ledger.here();
        const Range lost = {failing * 17, std::min((failing + 1) * 17, 100)};
        EXPECT_TRUE(std::any_of(here.begin(), here.end(),
                                [&](const Range& range) {
                                    return range.first <= lost.first && range.second >= lost.second;
                                }))
            << "rows from " << lost.first << " not done on the calling thread";
    }
}

TEST(ParallelRowsWith, doesAllRowsItself_whenEveryStartThrows) {
    Ledger ledger;
    const StartThread start = [](const std::function<void()>&) -> std::thread {
        throw std::bad_alloc();
    };
    EXPECT_NO_THROW(tw::parallelRowsWith(100, 8, start, ledger.work()));
    EXPECT_TRUE(ledger.covers(100));
    EXPECT_EQ(1U, ledger.threads());
}

}  // namespace
