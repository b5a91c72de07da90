// The order of locks as builds with tests check it.
#include "native/src/mutex.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "native/src/engine/parallel_rows.h"
#include "native/src/log.h"
#include "native/src/log_on_change.h"
#include "native/src/lut_cache.h"
#include "tests/support/temp_folder.h"

namespace {

using tw::LockFreeScope;
using tw::LockKind;
using tw::Mutex;

using Guard = std::lock_guard<Mutex>;

std::string held() {
    const char* name = tw::heldLock();
    return name ? name : "";
}

class LockOrder : public ::testing::Test {
protected:
    Mutex a_{"a"};
    Mutex b_{"b"};
    Mutex log_{"log", LockKind::kInnermost};
};

TEST_F(LockOrder, allowsLocks_oneAfterTheOther) {
    for (Mutex* mutex : {&a_, &b_, &log_, &a_}) {
        const Guard guard(*mutex);
        EXPECT_NE(held(), "");
    }
    EXPECT_EQ(held(), "");
}

TEST_F(LockOrder, allowsTheInnermostLock_underAnother) {
    const Guard outer(a_);
    for (int i = 0; i < 2; ++i) {
        const Guard inner(log_);
        EXPECT_EQ(held(), "log");
    }
    EXPECT_EQ(held(), "a");
}

TEST_F(LockOrder, countsForEachThreadByItself) {
    const Guard guard(a_);
    std::thread([this] {
        const Guard other(b_);
        EXPECT_EQ(held(), "b");
    }).join();
    EXPECT_EQ(held(), "a");
}

TEST_F(LockOrder, keepsThreadsApart_asAMutexDoes) {
    int count = 0;
    const auto work = [&] {
        for (int i = 0; i < 10000; ++i) {
            const Guard guard(a_);
            ++count;
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 20000);
}

TEST_F(LockOrder, allowsALogLine_underTheLockOfLinesOnChange) {
    const twtest::TempHome home;
    tw::LogOnChange lines("lines");
    lines.log("one");
    EXPECT_TRUE(twtest::readFile(home.dataFile("effect.log")).ends_with("  one\n"));
    EXPECT_EQ(held(), "");
}

using LockOrderDeathTest = LockOrder;

TEST_F(LockOrderDeathTest, endsTheProcess_whenTwoLocksNest) {
    const Guard outer(a_);
    EXPECT_DEATH(b_.lock(), "Lock order: \"b\" is taken inside \"a\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenALockIsTakenInsideTheInnermost) {
    const Guard inner(log_);
    EXPECT_DEATH(a_.lock(), "Lock order: \"a\" is taken inside \"log\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenALockIsTakenUnderTwo) {
    const Guard outer(a_);
    const Guard inner(log_);
    EXPECT_DEATH(b_.lock(), "Lock order: \"b\" is taken inside \"log\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenALockIsTakenTwice) {
    const Guard guard(a_);
    EXPECT_DEATH(a_.lock(), "Lock order: \"a\" is taken inside \"a\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenTheInnermostLockIsTakenTwice) {
    const Guard guard(log_);
    EXPECT_DEATH(log_.lock(), "Lock order: \"log\" is taken inside \"log\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenALockIsTakenInALockFreeScope) {
    const LockFreeScope scope("nothing");
    EXPECT_DEATH(a_.lock(), "Lock order: \"a\" is taken inside \"nothing\"\\.");
}

// What follows shows that these take a lock at all.
TEST_F(LockOrderDeathTest, endsTheProcess_whenALineOnChangeIsToldUnderALock) {
    tw::LogOnChange lines("lines");
    const Guard outer(a_);
    EXPECT_DEATH(lines.log("one"), "Lock order: \"lines\" is taken inside \"a\"\\.");
}

TEST_F(LockOrderDeathTest, endsTheProcess_whenALutIsLookedUpUnderALock) {
    const Guard outer(a_);
    EXPECT_DEATH(tw::embeddedLut("TWLUT0", 6, nullptr),
                 "Lock order: \"recent contents\" is taken inside \"a\"\\.");
}

// On the calling thread and on one of the workers.
TEST_F(LockOrderDeathTest, endsTheProcess_whenRowsOfAPictureAreLogged) {
    const twtest::TempHome home;
    const auto logRow = [](int wanted) {
        tw::setHardwareThreads(2);
        tw::parallelRows(32, [wanted](int first, int) {
            if (first == wanted) tw::logLine("row %d", first);
        });
    };
    EXPECT_DEATH(logRow(0), "Lock order: \"log\" is taken inside \"rows of a picture\"\\.");
    EXPECT_DEATH(logRow(16), "Lock order: \"log\" is taken inside \"rows of a picture\"\\.");
}

}  // namespace
