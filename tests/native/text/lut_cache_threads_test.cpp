// embeddedLut from several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "tests/support/luts.h"

namespace {

using Lut = std::shared_ptr<const tw::Lut3D>;

std::string textOf(long id) {
    return tw::toEmbeddedText(twtest::identityLut(9), id, "threads");
}

Lut lookUp(const std::string& bytes, std::string* error = nullptr) {
    return tw::embeddedLut(bytes.data(), bytes.size(), error);
}

void onThreads(int count, const std::function<void(int)>& body) {
    std::atomic<int> waiting{count};
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i) {
        threads.emplace_back([&, i] {
            --waiting;
            while (waiting.load() > 0)
                std::this_thread::yield();
            body(i);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

TEST(EmbeddedLutThreads, agreeOnRecord_whenBytesAreNew) {
    const std::string text = textOf(1);
    std::vector<Lut> got(8);
    onThreads(8, [&](int i) { got[static_cast<std::size_t>(i)] = lookUp(text); });
    const Lut later = lookUp(text);
    ASSERT_NE(nullptr, later);
    for (const Lut& lut : got) {
        ASSERT_NE(nullptr, lut);
        EXPECT_TRUE(twtest::sameLut(*later, *lut));
    }
    EXPECT_EQ(later, lookUp(text));
}

TEST(EmbeddedLutThreads, shareRecord_whenBytesAreKnown) {
    const std::string text = textOf(2);
    const Lut known = lookUp(text);
    std::atomic<int> others{0};
    onThreads(8, [&](int) {
        for (int i = 0; i < 200; ++i) {
            if (lookUp(text) != known) ++others;
        }
    });
    EXPECT_EQ(0, others.load());
}

// More contents than are kept, so that lookups, decodes and evictions cross.
TEST(EmbeddedLutThreads, giveRightRecord_whileOthersEvict) {
    std::vector<std::string> texts;
    for (long id = 0; id < 12; ++id)
        texts.push_back(textOf(100 + id));
    texts.push_back("TWLUT0 of threads");
    texts.push_back("TWLUT1 of threads");
    std::atomic<int> wrong{0};
    onThreads(6, [&](int thread) {
        for (int i = 0; i < 150; ++i) {
            const auto at = static_cast<std::size_t>(i * (thread + 1) + thread) % texts.size();
            std::string error;
            const Lut lut = lookUp(texts[at], &error);
            const bool right = at < 12 ? lut != nullptr && lut->data.size() == 2187 &&
                                             lut->id == 100 + static_cast<std::int64_t>(at)
                                       : lut == nullptr;
            if (!right) ++wrong;
        }
    });
    EXPECT_EQ(0, wrong.load());
}

}  // namespace
