// The parts of a TWLUT text as the writer makes them, and what the reader makes of such a text.
#pragma once

#include <cstddef>
#include <sstream>
#include <string>

namespace twfuzz {

struct WrittenText {
    explicit WrittenText(const std::string& text) {
        std::istringstream fields(text);
        fields >> form >> id >> name >> size >> lo;
        fields >> std::ws;
        hiBegin = static_cast<std::size_t>(fields.tellg());
        fields >> hi >> data;
    }

    // A name longer than 399 characters is not read back. And where the first 96 characters end
    // within hi, the reader takes the number as it is cut there: a rule of the format.
    bool readBackWhole() const {
        constexpr std::size_t kMostName = 399;
        constexpr std::size_t kShortLook = 96;
        const bool cut = hiBegin < kShortLook && kShortLook < hiBegin + hi.size();
        return name.size() <= kMostName && !cut;
    }

    std::string form, id, name, size, lo, hi, data;
    std::size_t hiBegin = 0;
};

}  // namespace twfuzz
