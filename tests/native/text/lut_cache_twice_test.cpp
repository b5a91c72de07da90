// A content that two threads decode at once is kept twice, and found where it was kept first.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>

#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "tests/support/failing_calls.h"
#include "tests/support/luts.h"

namespace {

using Lut = std::shared_ptr<const tw::Lut3D>;

Lut lookUp(const std::string& bytes) {
    return tw::embeddedLut(bytes.data(), bytes.size(), nullptr);
}

// Looks the bytes up; after the lookup has missed and the decoding has begun, another thread looks
// them up as well, from beginning to end.
Lut lookUpAround(const std::string& bytes, Lut& other) {
    const std::function<void()> atFirstBlock = [&] {
        twtest::tellOfBlocks(nullptr);
        std::thread([&] { other = lookUp(bytes); }).join();
    };
    const twtest::Watch watch;
    twtest::tellOfBlocks(&atFirstBlock);
    Lut lut = lookUp(bytes);
    twtest::tellOfBlocks(nullptr);
    return lut;
}

TEST(EmbeddedLutTwice, isFoundWhereItWasKeptFirst) {
    if (!twtest::canFail(twtest::LibraryCall::kNew))
        GTEST_SKIP() << "ThreadSanitizer allocates itself";
    twtest::watchCallsOf(reinterpret_cast<const void*>(&tw::embeddedLut));
    // The first lookup makes the list; let that be over.
    lookUp("TWLUT0 to begin with");
    const std::string text = tw::toEmbeddedText(twtest::identityLut(2), 1, "twice");
    Lut first;
    const Lut second = lookUpAround(text, first);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(lookUp(text), first);
    // Six more push out what came before the two; the next two push out one after the other.
    for (long id = 2; id < 8; ++id)
        lookUp(tw::toEmbeddedText(twtest::identityLut(2), id, "twice"));
    EXPECT_EQ(lookUp(text), first);
    lookUp("TWLUT0 for one");
    EXPECT_EQ(lookUp(text), second);
    lookUp("TWLUT0 for another");
    const Lut third = lookUp(text);
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
}

}  // namespace
