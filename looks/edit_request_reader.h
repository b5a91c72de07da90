// The request that the effect leaves for a companion panel when the user presses Edit LUT.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace looks {

// A longer line is cut there by the effect.
inline constexpr std::size_t kLongestRequest = 599;

enum class RequestState {
    kWhole,       // every member is known
    kCut,         // cut at the longest length: the id is known, what follows it perhaps not
    kUnfinished,  // it is being written: to be read again
    kForeign,     // no edit request
};

// "whole", "cut", "unfinished", "foreign".
const char* wordOf(RequestState state);

struct EditRequest {
    RequestState state = RequestState::kForeign;
    std::int64_t id = 0;              // 1 or more in whole and cut requests, else 0
    std::optional<std::string> name;  // any bytes; meant as UTF-8
    std::optional<std::int64_t> at;   // milliseconds since 1970 UTC
};

// Reads the contents of "edit-request.json". Not a JSON reader: names may hold line feeds and
// control characters as they are, which JSON refuses. Threads: any.
EditRequest readEditRequest(std::string_view contents);

}  // namespace looks
