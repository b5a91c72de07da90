// Any bytes as the markup of a project. Places are those of elements that were begun, and asking
// for the names of any object comes to an end.
#include "tintwell_host/look_files/project_markup.h"

#include <algorithm>
#include <cstdint>

#include "fuzz/require.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t count) {
    const auto* bytes = reinterpret_cast<const char*>(data);
    program::ProjectMarkup markup;
    for (std::size_t at = 0; at < count; at += 7) {
        markup.take(bytes + at, std::min<std::size_t>(7, count - at));
        const program::ProjectMarkup::Place place = markup.here();
        twfuzz::require(place.path.empty() || place.path[0] == '/', "a path begins at the root");
        twfuzz::require(place.object == 0 || !place.path.empty(), "an object is an element");
    }
    for (std::uint64_t object = 0; object < 60; object += 10)
        markup.namesOf(object);
    return 0;
}
