// The looks that were found, each once.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "looks/text_finder.h"
#include "native/src/lut_engine.h"

namespace looks {

// How often something was found, and the first places where, as the finder numbers them.
struct Occurrences {
    static constexpr std::size_t kMostPlaces = 100;
    std::uint64_t count = 0;
    std::vector<std::size_t> places;
};

struct ListedLook {
    tw::LutKind kind = tw::LutKind::kNone;
    std::string name;
    std::int64_t id = 0;
    std::int32_t size = 0;   // of a LUT
    std::int32_t probe = 0;  // of a pattern
    float lowest = 0.0f;     // of the LUT's values
    float highest = 0.0f;
    Occurrences found;
};

struct UnreadableText {
    std::string reason;  // the reader's
    Occurrences found;
};

// Texts with the same name, match and values are one look, in whatever coding and form. Holds up to
// kMostLooks; of those beyond only the occurrences are counted. Threads: one at a time.
class LookList {
public:
    static constexpr std::size_t kMostLooks = 10000;

    // Called with each look that is new to the list and its text, in the order of their discovery.
    using OnNew = std::function<void(const tw::Lut3D& lut, const std::string& text)>;
    explicit LookList(OnNew onNew = {}) : onNew_(std::move(onNew)) {}

    // True when the place was noted.
    bool add(const FoundText& text, std::size_t place);

    const std::vector<ListedLook>& looks() const { return looks_; }
    const std::vector<UnreadableText>& unreadable() const { return unreadable_; }
    std::uint64_t beyond() const { return beyond_; }

private:
    using Digest = std::array<std::uint64_t, 2>;
    static Digest digestOf(const tw::Lut3D& lut);

    OnNew onNew_;
    std::vector<ListedLook> looks_;
    std::map<Digest, std::size_t> known_;
    std::vector<UnreadableText> unreadable_;
    std::uint64_t beyond_ = 0;
};

}  // namespace looks
