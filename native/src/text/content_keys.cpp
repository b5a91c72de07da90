#include "native/src/text/content_keys.h"

#include <cstring>
#include <mutex>
#include <new>
#include <utility>

namespace tw {

std::uint64_t ContentKeys::keyOf(const void* bytes, unsigned long count) {
    if (count < kLeastBytes || count > kMostBytes) return hash_(bytes, count);
    for (const auto& copy : copies()) {
        if (copy && copy->bytes.size() == count &&
            std::memcmp(copy->bytes.data(), bytes, count) == 0) {
            return copy->key;
        }
    }
    const std::uint64_t key = hash_(bytes, count);
    if (isHashedAgain(key)) keep(bytes, count, key);
    return key;
}

std::size_t ContentKeys::keptBytes() {
    return bytesOf(copies());
}

ContentKeys::Copies ContentKeys::copies() {
    const std::lock_guard lock(mu_);
    return copies_;
}

// Whether the key is one of the last two; it is the last one from now on.
bool ContentKeys::isHashedAgain(std::uint64_t key) {
    const std::lock_guard lock(mu_);
    if (hashedLast_[0] == key) return true;
    std::swap(hashedLast_[0], hashedLast_[1]);
    return std::exchange(hashedLast_[0], key) == key;
}

void ContentKeys::keep(const void* bytes, std::size_t count, std::uint64_t key) {
    {
        // Freed before the copy is made, but not under the lock: either takes milliseconds.
        Copies dropped;
        if (!beginCopy(count, key, dropped)) return;
    }
    std::shared_ptr<const Copy> copy;
    try {
        const auto* first = static_cast<const unsigned char*>(bytes);
        copy = std::make_shared<const Copy>(key, std::vector<unsigned char>(first, first + count));
    } catch (const std::bad_alloc&) {
        // The frame can do without.
    }
    endCopy(std::move(copy));
}

// Makes room for a copy, the oldest ones first. False where another thread is copying, or reads
// what would have to go, or has just kept the content.
bool ContentKeys::beginCopy(std::size_t count, std::uint64_t key, Copies& dropped) {
    const std::lock_guard lock(mu_);
    if (copying_) return false;
    for (const auto& copy : copies_) {
        if (copy && copy->key == key) return false;
    }
    for (std::size_t i = 0; i < kMostCopies; ++i) {
        const bool full = copies_.back() != nullptr;
        if (!full && bytesOf(copies_) + count <= kMostBytes) break;
        // References are only taken under the lock: a count of 1 stays.
        if (copies_[0].use_count() > 1) return false;
        dropped[i] = std::move(copies_[0]);
        copies_[0] = std::move(copies_[1]);
    }
    copying_ = true;
    return true;
}

void ContentKeys::endCopy(std::shared_ptr<const Copy> copy) {
    const std::lock_guard lock(mu_);
    copying_ = false;
    if (copy) copies_[copies_[0] ? 1 : 0] = std::move(copy);
}

std::size_t ContentKeys::bytesOf(const Copies& copies) {
    std::size_t bytes = 0;
    for (const auto& copy : copies)
        bytes += copy ? copy->bytes.size() : 0;
    return bytes;
}

}  // namespace tw
