// tw::ContentKeys: the hash of every content, and copies of those that come again.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "native/src/text/content_keys.h"

namespace {

std::atomic<int> hashes{0};
std::function<void()> atNextHash;

std::uint64_t countingHash(const void* bytes, unsigned long count) {
    ++hashes;
    if (const std::function<void()> call = std::exchange(atNextHash, nullptr)) call();
    return tw::contentHash(bytes, count);
}

std::string content(char letter, std::size_t count = 20000) {
    return std::string(count, letter);
}

class ContentKeys : public ::testing::Test {
protected:
    // The right key, and whether the content was hashed for it.
    bool isHashed(const std::string& bytes) {
        const int before = hashes;
        EXPECT_EQ(tw::contentHash(bytes.data(), bytes.size()),
                  keys_.keyOf(bytes.data(), bytes.size()));
        return hashes != before;
    }

    void keep(const std::string& bytes) {
        isHashed(bytes);
        isHashed(bytes);
        EXPECT_FALSE(isHashed(bytes));
    }

    tw::ContentKeys keys_{countingHash};
};

TEST_F(ContentKeys, hashesAContentTwice_thenCompares) {
    const std::string bytes = content('a');
    EXPECT_TRUE(isHashed(bytes));
    EXPECT_EQ(0U, keys_.keptBytes());
    EXPECT_TRUE(isHashed(bytes));
    EXPECT_EQ(bytes.size(), keys_.keptBytes());
    EXPECT_FALSE(isHashed(bytes));
}

TEST_F(ContentKeys, trustsNoAddress) {
    std::string bytes = content('a');
    keep(bytes);
    for (const std::size_t at : {std::size_t{0}, bytes.size() / 2, bytes.size() - 1}) {
        const char was = std::exchange(bytes[at], 'b');
        EXPECT_TRUE(isHashed(bytes)) << at;
        bytes[at] = was;
        EXPECT_FALSE(isHashed(bytes)) << at;
    }
}

TEST_F(ContentKeys, tellsLengthsApart) {
    keep(content('a', 20000));
    EXPECT_TRUE(isHashed(content('a', 19999)));
    EXPECT_TRUE(isHashed(content('a', 20001)));
}

TEST_F(ContentKeys, findsEqualBytesAtAnyAddress) {
    keep(content('a'));
    for (std::size_t shift = 1; shift < 9; ++shift) {
        const std::string memory = std::string(shift, '#') + content('a');
        const int before = hashes;
        keys_.keyOf(memory.data() + shift, memory.size() - shift);
        EXPECT_EQ(before, hashes) << shift;
    }
}

TEST_F(ContentKeys, alwaysHashesSmallContents) {
    const std::string bytes = content('a', tw::ContentKeys::kLeastBytes - 1);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(isHashed(bytes));
    EXPECT_TRUE(isHashed("TWLUT0"));
    EXPECT_EQ(0U, keys_.keptBytes());
    keep(content('a', tw::ContentKeys::kLeastBytes));
}

TEST_F(ContentKeys, keepsTwo_thatTakeTurns) {
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(isHashed(content('a')));
        EXPECT_TRUE(isHashed(content('b')));
    }
    EXPECT_FALSE(isHashed(content('a')));
    EXPECT_FALSE(isHashed(content('b')));
}

TEST_F(ContentKeys, keepsNone_whenThreeTakeTurns) {
    for (int i = 0; i < 5; ++i) {
        for (const char letter : {'a', 'b', 'c'})
            EXPECT_TRUE(isHashed(content(letter)));
    }
    EXPECT_EQ(0U, keys_.keptBytes());
}

TEST_F(ContentKeys, dropsTheOldest_forAThird) {
    keep(content('a'));
    keep(content('b'));
    keep(content('c'));
    EXPECT_EQ(40000U, keys_.keptBytes());
    EXPECT_FALSE(isHashed(content('b')));
    EXPECT_FALSE(isHashed(content('c')));
    EXPECT_TRUE(isHashed(content('a')));
}

TEST_F(ContentKeys, keepsOneAlone_whereTwoWouldBeTooLarge) {
    const std::size_t half = tw::ContentKeys::kMostBytes / 2;
    keep(content('a', half));
    keep(content('b', half));
    EXPECT_FALSE(isHashed(content('a', half)));
    keep(content('c', half + 1));
    EXPECT_EQ(half + 1, keys_.keptBytes());
    EXPECT_TRUE(isHashed(content('b', half)));
}

TEST_F(ContentKeys, alwaysHashes_whatIsTooLarge) {
    keep(content('a', tw::ContentKeys::kMostBytes));
    const std::string bytes = content('b', tw::ContentKeys::kMostBytes + 1);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(isHashed(bytes));
    EXPECT_FALSE(isHashed(content('a', tw::ContentKeys::kMostBytes)));
}

// Another thread keeps the content while this one hashes it.
TEST_F(ContentKeys, keepsAContentOnce) {
    const std::string bytes = content('a');
    isHashed(bytes);
    atNextHash = [&] {
        std::thread([&] { keys_.keyOf(bytes.data(), bytes.size()); }).join();
        EXPECT_EQ(bytes.size(), keys_.keptBytes());
    };
    EXPECT_TRUE(isHashed(bytes));
    EXPECT_EQ(bytes.size(), keys_.keptBytes());
}

TEST(ContentKeysThreads, areRight_whileThreadsMakeEachOthersCopiesGo) {
    tw::ContentKeys keys;
    std::vector<std::string> contents;
    for (const char letter : {'a', 'b', 'c', 'd'})
        contents.push_back(content(letter, tw::ContentKeys::kMostBytes / 500));
    std::atomic<int> wrong{0};
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            for (std::size_t i = 0; i < 60; ++i) {
                const std::string& bytes = contents[(i / 4 + thread) % contents.size()];
                const std::uint64_t key = keys.keyOf(bytes.data(), bytes.size());
                if (key != tw::contentHash(bytes.data(), bytes.size())) ++wrong;
                if (keys.keptBytes() > tw::ContentKeys::kMostBytes) ++wrong;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(0, wrong);
}

}  // namespace
