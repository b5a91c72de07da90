// The looks in a stream of bytes.
#pragma once

#include <string>
#include <vector>

#include "looks/look_list.h"
#include "looks/text_finder.h"

namespace desk {

// Give it all bytes in pieces of any size, then call end().
class LookFinder {
public:
    struct Place {
        std::uint64_t offset;
        bool base64;
        bool wide;
    };

    LookFinder();
    LookFinder(const LookFinder&) = delete;
    LookFinder& operator=(const LookFinder&) = delete;

    void take(const std::string& bytes) { finder_.take(bytes.data(), bytes.size()); }
    void end() { finder_.end(); }

    const looks::LookList& list() const { return list_; }
    // By the numbers in the list.
    const std::vector<Place>& places() const { return places_; }
    // The text of each look in the list.
    const std::vector<std::string>& texts() const { return texts_; }

private:
    std::vector<Place> places_;
    std::vector<std::string> texts_;
    looks::LookList list_;
    looks::TextFinder finder_;
};

}  // namespace desk
