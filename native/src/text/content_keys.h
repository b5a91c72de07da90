// The keys of the decode cache. Internal to it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "native/src/mutex.h"
#include "native/src/text/content_hash.h"

namespace tw {

// Gives the hash of contents, mostly without hashing them. Each frame asks for the key of the same
// megabytes, and a hash is one chain of dependent steps, while a comparison is bound by memory
// alone. So copies are kept of contents that come again, and bytes that equal a copy have its key.
//
// A content is kept when it is one of the last two that were hashed: not the first time, and not
// where more contents than that take turns. Contents below kLeastBytes are always hashed, as that
// takes microseconds.
//
// Threads: any. One lock guards the list of copies; it is not held while bytes are read, copied or
// freed, and no other lock is taken under it.
class ContentKeys {
public:
    static constexpr std::size_t kMostCopies = 2;
    // Of all copies together, and at any time.
    static constexpr std::size_t kMostBytes = std::size_t{64} << 20;
    static constexpr std::size_t kLeastBytes = std::size_t{16} << 10;

    using Hash = std::uint64_t(const void* bytes, unsigned long count);
    // Tests give a hash that counts its calls.
    explicit ContentKeys(Hash* hash = contentHash) : hash_(hash) {}

    // The hash of the bytes. Where memory for a copy cannot be had, none is kept. Never throws.
    std::uint64_t keyOf(const void* bytes, unsigned long count);

    // Bytes of the copies that are kept now, for tests.
    std::size_t keptBytes();

private:
    struct Copy {
        std::uint64_t key;
        std::vector<unsigned char> bytes;
    };
    // Oldest first; null where there are fewer.
    using Copies = std::array<std::shared_ptr<const Copy>, kMostCopies>;

    Copies copies();
    bool isHashedAgain(std::uint64_t key);
    void keep(const void* bytes, std::size_t count, std::uint64_t key);
    bool beginCopy(std::size_t count, std::uint64_t key, Copies& dropped);
    void endCopy(std::shared_ptr<const Copy> copy);

    static std::size_t bytesOf(const Copies& copies);

    Hash* hash_;
    Mutex mu_{"kept contents"};
    Copies copies_;
    std::array<std::uint64_t, 2> hashedLast_{};
    bool copying_ = false;  // by one thread at a time, so that kMostBytes holds
};

}  // namespace tw
