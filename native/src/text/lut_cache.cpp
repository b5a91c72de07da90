#include "native/src/lut_cache.h"

#include <cstdint>
#include <deque>
#include <utility>

#include "native/src/lut_engine.h"
#include "native/src/mutex.h"
#include "native/src/never_destroyed.h"
#include "native/src/text/content_keys.h"
#include "native/src/text/lut_text_reader.h"

namespace tw {
namespace {

constexpr unsigned long kMinBytes = 6;
constexpr std::size_t kKeptContents = 8;

using SharedLut = std::shared_ptr<const Lut3D>;

// The contents decoded last, oldest first.
struct Recent {
    Mutex mu{"recent contents"};
    std::deque<std::pair<std::uint64_t, SharedLut>> entries;

    // Whether the content is kept; then *found is its LUT, or null for "no LUT".
    bool find(std::uint64_t key, SharedLut* found) {
        const std::lock_guard lock(mu);
        for (const auto& [entryKey, lut] : entries) {
            if (entryKey != key) continue;
            *found = lut;
            return true;
        }
        return false;
    }

    void add(std::uint64_t key, const SharedLut& lut) {
        // Released only after the lock, as freeing a large LUT takes its time.
        std::pair<std::uint64_t, SharedLut> oldest;
        const std::lock_guard lock(mu);
        entries.emplace_back(key, lut);
        if (entries.size() <= kKeptContents) return;
        oldest = std::move(entries.front());
        entries.pop_front();
    }
};

Recent& recent() {
    static NeverDestroyed<Recent> instance;
    return *instance;
}

ContentKeys& contentKeys() {
    static NeverDestroyed<ContentKeys> instance;
    return *instance;
}

SharedLut decode(const void* bytes, unsigned long count, std::string* err) {
    auto lut = std::make_shared<Lut3D>();
    if (!readParameter(bytes, count, *lut, err)) return nullptr;
    return kindOf(lut.get()) == LutKind::kNone ? nullptr : lut;
}

}  // namespace

SharedLut embeddedLut(const void* bytes, unsigned long count, std::string* err) {
    if (!bytes || count < kMinBytes) return nullptr;
    const std::uint64_t key = contentKeys().keyOf(bytes, count);
    SharedLut lut;
    if (recent().find(key, &lut)) return lut;
    lut = decode(bytes, count, err);
    recent().add(key, lut);
    return lut;
}

}  // namespace tw
