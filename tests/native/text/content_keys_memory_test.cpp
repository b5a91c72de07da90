// ContentKeys without memory for its copies, and what its lock is held for.
#include <gtest/gtest.h>

#include <string>

#include "native/src/mutex.h"
#include "native/src/text/content_keys.h"
#include "tests/support/failing_calls.h"

namespace {

using twtest::LibraryCall;

TEST(ContentKeysMemory, isDoneWithout_whereThereIsNone) {
    if (!twtest::canFail(LibraryCall::kNew)) GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(reinterpret_cast<const void*>(&tw::contentHash));
    tw::ContentKeys keys;
    const std::string bytes(20000, 'a');
    const std::uint64_t key = tw::contentHash(bytes.data(), bytes.size());
    EXPECT_EQ(key, keys.keyOf(bytes.data(), bytes.size()));
    for (int nth = 1; nth <= 2; ++nth) {
        const twtest::Watch watch;
        twtest::failCall(LibraryCall::kNew, nth);
        EXPECT_EQ(key, keys.keyOf(bytes.data(), bytes.size()));
        EXPECT_FALSE(twtest::isFailureDue(LibraryCall::kNew)) << nth;
        twtest::letCallsPass();
        EXPECT_EQ(0U, keys.keptBytes());
    }
    EXPECT_EQ(key, keys.keyOf(bytes.data(), bytes.size()));
    EXPECT_EQ(bytes.size(), keys.keptBytes());
}

std::uint64_t hashWithoutLocks(const void* bytes, unsigned long count) {
    EXPECT_EQ(nullptr, tw::heldLock());
    return tw::contentHash(bytes, count);
}

TEST(ContentKeysMemory, copiesAndHashesWithoutItsLock) {
    if (!twtest::canFail(LibraryCall::kNew)) GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(reinterpret_cast<const void*>(&tw::contentHash));
    tw::ContentKeys keys(hashWithoutLocks);
    int blocks = 0;
    const std::function<void()> note = [&] {
        ++blocks;
        EXPECT_EQ(nullptr, tw::heldLock());
    };
    const std::string bytes(20000, 'a');
    for (int i = 0; i < 3; ++i) {
        const twtest::Watch watch;
        twtest::tellOfBlocks(&note);
        keys.keyOf(bytes.data(), bytes.size());
        twtest::tellOfBlocks(nullptr);
    }
    EXPECT_GE(blocks, 1);
}

}  // namespace
