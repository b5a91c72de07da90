// contentHash: words first, then the bytes left over.
#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "native/src/text/content_hash.h"

namespace {

std::uint64_t hashOf(const std::string& bytes) {
    return tw::contentHash(bytes.data(), bytes.size());
}

// Byte by byte, without reading words.
std::uint64_t slowHash(const std::vector<std::uint8_t>& bytes) {
    std::uint64_t h = bytes.size() ^ 0x9E3779B97F4A7C15U;
    const std::size_t inWords = bytes.size() / 8 * 8;
    for (std::size_t at = 0; at < inWords; at += 8) {
        std::uint64_t word = 0;
        for (std::size_t i = 8; i-- > 0;)
            word = word * 256 + bytes[at + i];
        h = (word ^ h) * 0xFF51AFD7ED558CCDU;
        h ^= h >> 32;
    }
    for (std::size_t at = inWords; at < bytes.size(); ++at)
        h = (h ^ bytes[at]) * 0x100000001B3U;
    return h;
}

TEST(ContentHash, hasKnownValues) {
    std::string counting;
    for (char c = 1; c < 24; ++c)
        counting += c;
    EXPECT_EQ(0x9E3779B97F4A7C15U, hashOf(""));
    EXPECT_EQ(0xD4818BC949FE368DU, hashOf("TWLUT0"));
    EXPECT_EQ(0x364EEA287E07DA20U, hashOf("TWLUT00"));
    EXPECT_EQ(0x5FC8D153A5114426U, hashOf("TWLUT000"));
    EXPECT_EQ(0x7AB5FC15F0A7E5B9U, hashOf(std::string(9, '\xFF')));
    EXPECT_EQ(0x98449B7991EAA3F3U, hashOf(counting));
    EXPECT_EQ(0x50F69517260A6BECU, hashOf(std::string(16, '\0')));
    EXPECT_EQ(0xE77D369A44560AEEU, hashOf(std::string("T\0W\0L\0U\0T\0"
                                                      "0\0",
                                                      12)));
}

TEST(ContentHash, isCountMixed_withoutBytes) {
    EXPECT_EQ(0x9E3779B97F4A7C15U, tw::contentHash(nullptr, 0));
}

TEST(ContentHash, equalsSlowForm_atEveryLengthAndAlignment) {
    std::vector<std::uint8_t> bytes;
    for (unsigned i = 0; i < 80; ++i)
        bytes.push_back(static_cast<std::uint8_t>(i * 73 + 200));
    for (std::size_t start = 0; start < 8; ++start) {
        for (std::size_t length = 0; length <= 72; ++length) {
            const auto first = bytes.begin() + static_cast<std::ptrdiff_t>(start);
            const std::vector<std::uint8_t> part(first,
                                                 first + static_cast<std::ptrdiff_t>(length));
            EXPECT_EQ(slowHash(part), tw::contentHash(bytes.data() + start, length))
                << "from " << start << ", " << length << " bytes";
        }
    }
}

// A vector of exactly these bytes, so that reading past them is noticed by the sanitizer.
TEST(ContentHash, readsNoFurther_thanItsBytes) {
    std::set<std::uint64_t> keys;
    for (std::size_t length = 6; length <= 24; ++length) {
        const std::vector<std::uint8_t> zeros(length, 0);
        EXPECT_EQ(slowHash(zeros), tw::contentHash(zeros.data(), length)) << length;
        keys.insert(tw::contentHash(zeros.data(), length));
    }
    EXPECT_EQ(19U, keys.size());
}

}  // namespace
