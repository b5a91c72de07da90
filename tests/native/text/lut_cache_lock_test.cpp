// Records are found and kept under the cache's lock, and decoded without it.
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>

#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "native/src/mutex.h"
#include "tests/support/failing_calls.h"
#include "tests/support/luts.h"

namespace {

// More than fit into what the list of kept records has allocated already.
constexpr long kContents = 100;

TEST(EmbeddedLutLock, isHeldWhenARecordIsKept_andNotWhenItIsDecoded) {
    if (!twtest::canFail(twtest::LibraryCall::kNew))
        GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(reinterpret_cast<const void*>(&tw::embeddedLut));
    std::multiset<std::string> locks;
    const std::function<void()> note = [&] {
        const char* lock = tw::heldLock();
        twtest::tellOfBlocks(nullptr);
        locks.insert(lock ? lock : "none");
        twtest::tellOfBlocks(&note);
    };
    for (long id = 0; id < kContents; ++id) {
        const std::string text = tw::toEmbeddedText(twtest::identityLut(2), id, "lock");
        const twtest::Watch watch;
        twtest::tellOfBlocks(&note);
        EXPECT_NE(tw::embeddedLut(text.data(), text.size(), nullptr), nullptr);
        twtest::tellOfBlocks(nullptr);
    }
    EXPECT_GE(locks.count("none"), static_cast<std::size_t>(kContents));
    const std::size_t kept = locks.count("recent contents");
    EXPECT_GE(kept, 1U);
    EXPECT_LT(kept, static_cast<std::size_t>(kContents));
    EXPECT_EQ(locks.count("none") + kept, locks.size());
}

TEST(EmbeddedLutLockDeathTest, isTakenToFindARecord) {
    EXPECT_EQ(tw::embeddedLut("TWLUT0", 6, nullptr), nullptr);
    tw::Mutex other("other");
    const std::lock_guard lock(other);
    EXPECT_DEATH(tw::embeddedLut("TWLUT0", 6, nullptr),
                 "Lock order: \"recent contents\" is taken inside \"other\"\\.");
}

}  // namespace
