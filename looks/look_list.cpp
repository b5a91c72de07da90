#include "looks/look_list.h"

#include <algorithm>
#include <bit>

#include "native/src/lut_text.h"

namespace looks {
namespace {

bool note(Occurrences& found, std::size_t place) {
    ++found.count;
    if (found.places.size() == Occurrences::kMostPlaces) return false;
    found.places.push_back(place);
    return true;
}

ListedLook listed(const tw::Lut3D& lut) {
    ListedLook look;
    look.kind = tw::kindOf(&lut);
    look.name = lut.name;
    look.id = lut.id;
    look.size = lut.size;
    look.probe = lut.probe;
    if (!lut.data.empty()) {
        const auto [low, high] = std::minmax_element(lut.data.begin(), lut.data.end());
        look.lowest = *low;
        look.highest = *high;
    }
    return look;
}

}  // namespace

// Two sums that mix in different ways: a thousand million looks may differ before two of them are
// likely to be taken for one.
LookList::Digest LookList::digestOf(const tw::Lut3D& lut) {
    Digest sums = {0x9E3779B97F4A7C15, 0xCBF29CE484222325};
    const auto mix = [&sums](std::uint64_t word) {
        sums[0] = (sums[0] ^ word) * 0xFF51AFD7ED558CCD;
        sums[0] ^= sums[0] >> 32;
        sums[1] = (std::rotl(sums[1], 23) ^ word) * 0xC4CEB9FE1A85EC53;
        sums[1] ^= sums[1] >> 29;
    };
    mix(static_cast<std::uint64_t>(lut.id));
    mix(static_cast<std::uint64_t>(lut.size));
    mix(static_cast<std::uint64_t>(lut.probe));
    mix(lut.name.size());
    for (const char character : lut.name)
        mix(static_cast<unsigned char>(character));
    for (const float sample : lut.data)
        mix(std::bit_cast<std::uint32_t>(sample));
    return sums;
}

bool LookList::add(const FoundText& text, std::size_t place) {
    tw::Lut3D lut;
    std::string reason;
    if (!tw::parseEmbeddedText(text.text, lut, &reason)) {
        auto same =
            std::find_if(unreadable_.begin(), unreadable_.end(),
                         [&reason](const UnreadableText& other) { return other.reason == reason; });
        if (same == unreadable_.end()) same = unreadable_.insert(same, {reason, {}});
        return note(same->found, place);
    }
    const Digest digest = digestOf(lut);
    if (const auto known = known_.find(digest); known != known_.end()) {
        return note(looks_[known->second].found, place);
    }
    if (looks_.size() == kMostLooks) {
        ++beyond_;
        return false;
    }
    known_.emplace(digest, looks_.size());
    looks_.push_back(listed(lut));
    if (onNew_) onNew_(lut, text.text);
    return note(looks_.back().found, place);
}

}  // namespace looks
