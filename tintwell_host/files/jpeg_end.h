// Whether a JPEG file was cut: its reader fills the rest of the picture with grey and says nothing.
#pragma once

#include <string_view>

namespace program {

// True when the file goes on to its end-of-image marker. Follows the markers by ITU-T T.81, annex
// B; what comes behind the picture, as telephones append films, does not count.
bool hasEndOfImage(std::string_view jpeg);

}  // namespace program
