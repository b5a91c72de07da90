// The ledger and the basic suite's other functions. Misuse by an effect is in faults_test.cpp.
#include "host_sim/suites/suite_ledger.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host_sim/callbacks.h"

namespace {

using Problems = std::vector<std::string>;

class Suites : public testing::Test {
protected:
    Suites() { suites.offer("Some Suite", 2, &table); }

    const int table = 0;
    host_sim::Books books;
    host_sim::Refusals refusals;
    host_sim::SuiteLedger suites{books, refusals};
    const void* found = &books;
};

TEST_F(Suites, areFoundByNameAndVersion) {
    EXPECT_EQ(suites.acquire("Some Suite", 2, &found), kSPNoError);
    EXPECT_EQ(found, &table);
    EXPECT_EQ(suites.acquire("Some Suite", 1, &found), kSPSuiteNotFoundError);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(suites.acquire("Other Suite", 2, &found), kSPSuiteNotFoundError);
    EXPECT_EQ(suites.use("Some Suite", 2).acquired, 1);
    EXPECT_EQ(suites.use("Some Suite", 1).refused, 1);
    EXPECT_EQ(suites.use("Nobody's Suite", 1).refused, 0);
}

TEST_F(Suites, balanceAtTheEnd) {
    suites.acquire("Some Suite", 2, &found);
    suites.acquire("Some Suite", 2, &found);
    EXPECT_EQ(suites.release("Some Suite", 2), kSPNoError);
    suites.reportLeftovers();
    EXPECT_EQ(books.problems(), Problems({"The suite \"Some Suite\" version 2 was acquired 2 "
                                          "time(s) and released only 1."}));
}

TEST_F(Suites, refuseNullPointers) {
    EXPECT_EQ(suites.acquire(nullptr, 2, &found), kSPBadParameterError);
    EXPECT_EQ(suites.acquire("Some Suite", 2, nullptr), kSPBadParameterError);
    EXPECT_EQ(suites.release(nullptr, 2), kSPBadParameterError);
    EXPECT_EQ(books.problems().size(), 3U);
}

TEST(BasicSuite, comparesTokensAndHasNoMemory) {
    const SPBasicSuite basic = host_sim::basicSuite();
    void* block = nullptr;
    EXPECT_EQ(basic.IsEqual("a", "a"), 1);
    EXPECT_EQ(basic.IsEqual("a", "b"), 0);
    EXPECT_EQ(basic.AllocateBlock(1, &block), kSPUnimplementedError);
    EXPECT_EQ(basic.ReallocateBlock(block, 1, &block), kSPUnimplementedError);
    EXPECT_EQ(basic.FreeBlock(block), kSPUnimplementedError);
    EXPECT_EQ(basic.Undefined(), kSPUnimplementedError);
}

}  // namespace
