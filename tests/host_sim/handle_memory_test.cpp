// Handle memory alone. Misuse by an effect is in faults_test.cpp.
#include "host_sim/memory/handle_memory.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <thread>
#include <vector>

namespace {

using Problems = std::vector<std::string>;
const std::string kWhere = "in no command of this thread";

class Handles : public testing::Test {
protected:
    host_sim::Books books;
    host_sim::Refusals refusals;
    host_sim::HandleMemory memory{books, refusals};
};

TEST_F(Handles, lockGivesTheMasterPointersBlock) {
    const PF_Handle handle = memory.allocate(10);
    void* block = memory.lock(handle);
    EXPECT_EQ(block, *handle);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 16, 0U);
    EXPECT_EQ(memory.size(handle), 10U);
    EXPECT_EQ(memory.contents(handle), std::vector<std::uint8_t>(10, 0xA7));
    memory.unlock(handle);
    memory.dispose(handle);
    EXPECT_EQ(*handle, nullptr);
    EXPECT_EQ(books.problems(), Problems());
}

TEST_F(Handles, resizeMovesTheBlockAndKeepsItsContents) {
    PF_Handle handle = memory.hostAllocate({1, 2, 3});
    const PF_Handle before = handle;
    const char* block = *handle;
    EXPECT_EQ(memory.resize(5, &handle), PF_Err_NONE);
    EXPECT_EQ(handle, before);
    EXPECT_NE(*handle, block);
    EXPECT_EQ(memory.contents(handle), std::vector<std::uint8_t>({1, 2, 3, 0xA7, 0xA7}));
    EXPECT_EQ(memory.resize(2, &handle), PF_Err_NONE);
    EXPECT_EQ(memory.contents(handle), std::vector<std::uint8_t>({1, 2}));
}

TEST_F(Handles, resizeReplacesTheHandle_onDemand) {
    refusals.replaceHandleOnResize(true);
    PF_Handle handle = memory.hostAllocate({1, 2});
    const PF_Handle before = handle;
    memory.resize(3, &handle);
    EXPECT_NE(handle, before);
    EXPECT_FALSE(memory.isLive(before));
    EXPECT_EQ(memory.latest(before), handle);
    EXPECT_EQ(memory.contents(handle), std::vector<std::uint8_t>({1, 2, 0xA7}));
    EXPECT_EQ(memory.counts().live, 1U);
    EXPECT_EQ(books.problems(), Problems());
    memory.lock(before);
    EXPECT_EQ(books.problems(),
              Problems({"host_lock_handle was given handle 1 (3 bytes, made " + kWhere +
                        "), which was replaced by a resize " + kWhere + " (" + kWhere + ")."}));
}

TEST_F(Handles, locksAreCounted) {
    const PF_Handle handle = memory.allocate(1);
    memory.lock(handle);
    memory.lock(handle);
    memory.unlock(handle);
    memory.reportLeftovers();
    EXPECT_EQ(
        books.problems(),
        Problems({"The handle 1 (1 bytes, made " + kWhere +
                  ") was never disposed of, and is locked 1 time(s), first " + kWhere + "."}));
}

TEST_F(Handles, unrestIsWhatTheEffectHoldsOrHasDamagedBetweenCommands) {
    const PF_Handle locked = memory.allocate(1);
    const PF_Handle damaged = memory.hostAllocate({1, 2});
    const PF_Handle ended = memory.allocate(3);
    memory.reportUnrest();
    EXPECT_EQ(books.problems(), Problems());

    memory.lock(locked);
    (*damaged)[2] = 0;
    memory.dispose(ended);
    memory.reportUnrest();
    EXPECT_EQ(books.problems(),
              Problems({"The handle 1 (1 bytes, made " + kWhere +
                            ") is still locked 1 time(s), first " + kWhere + ".",
                        "Bytes beside handle 2 (2 bytes, made " + kWhere + ") were overwritten."}));
}

TEST_F(Handles, aRefusedLockIsAnsweredByOneUnlock_ofThatThread) {
    const PF_Handle handle = memory.allocate(1);
    refusals.fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(memory.lock(handle), nullptr);
    std::thread([&] { memory.unlock(handle); }).join();
    EXPECT_EQ(books.problems().size(), 1U);
    memory.unlock(handle);
    EXPECT_EQ(books.problems().size(), 1U);
    EXPECT_EQ(memory.counts().unlocksAfterRefusal, 1U);
    memory.unlock(handle);
    EXPECT_EQ(books.problems().size(), 2U);
}

TEST_F(Handles, aRefusedLockNeedsNoAnswer) {
    const PF_Handle handle = memory.allocate(1);
    refusals.fail(host_sim::Refusal::kLock, 1);
    memory.lock(handle);
    memory.forgetRefusedLocks();
    EXPECT_EQ(books.problems(), Problems());
    memory.unlock(handle);
    EXPECT_EQ(books.problems().size(), 1U);
}

TEST_F(Handles, damageIsFound_atTheEnd) {
    const PF_Handle handle = memory.allocate(4);
    (*handle)[4] = 0;
    memory.reportLeftovers();
    EXPECT_EQ(books.problems(),
              Problems({"Bytes beside handle 1 (4 bytes, made " + kWhere + ") were overwritten.",
                        "The handle 1 (4 bytes, made " + kWhere + ") was never disposed of."}));
}

TEST_F(Handles, areForManyThreads) {
    const auto work = [this] {
        for (int i = 0; i < 200; ++i) {
            PF_Handle handle = memory.allocate(8);
            std::memset(memory.lock(handle), i, 8);
            memory.unlock(handle);
            memory.resize(16, &handle);
            memory.dispose(handle);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
    memory.reportLeftovers();
    EXPECT_EQ(books.problems(), Problems());
    EXPECT_EQ(memory.counts().disposals, 800U);
}

}  // namespace
