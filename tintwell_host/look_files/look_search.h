// The looks in files of any kind.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "looks/look_list.h"
#include "tintwell_host/look_files/stream_reader.h"

namespace program {

// Where a text stands.
struct LookPlace {
    std::string stream;  // the file, and what in it
    std::uint64_t offset = 0;
    std::string coding;  // "8-bit", "16-bit", either with ", base64" behind it
    std::string path;    // of the elements round it, in markup
    std::string clip;    // names, where a project tells them
    std::string effect;
};

struct LookSearch {
    looks::LookList list;
    std::vector<LookPlace> places;  // by the numbers that the list has for them
    std::vector<std::string> warnings;
};

// Looks through `file` as readStreams does, adding to `search`. Throws Failure.
void searchLooks(const std::string& file, LookSearch& search);

}  // namespace program
