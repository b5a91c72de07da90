#include "native/src/text/content_hash.h"

#include <bit>
#include <cstring>

namespace tw {
namespace {

constexpr std::uint64_t kGoldenRatio = 0x9E3779B97F4A7C15;
constexpr std::uint64_t kWordMultiplier = 0xFF51AFD7ED558CCD;
constexpr std::uint64_t kBytePrime = 0x100000001B3;

static_assert(std::endian::native == std::endian::little, "words are read as they lie in memory");

}  // namespace

std::uint64_t contentHash(const void* bytes, unsigned long count) {
    const auto* at = static_cast<const unsigned char*>(bytes);
    std::uint64_t hash = count ^ kGoldenRatio;
    for (unsigned long words = count / 8; words != 0; --words, at += 8) {
        std::uint64_t word;
        std::memcpy(&word, at, sizeof word);
        hash = (word ^ hash) * kWordMultiplier;
        hash ^= hash >> 32;
    }
    for (unsigned long left = count % 8; left != 0; --left, ++at)
        hash = (hash ^ *at) * kBytePrime;
    return hash;
}

}  // namespace tw
