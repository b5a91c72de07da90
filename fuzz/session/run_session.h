// One session from its first byte to its last.
#pragma once

#include <cstddef>
#include <cstdint>

namespace session_fuzz {

// Aborts with a message when anything is not as it must be. Leaves nothing behind but the log. Not
// more than one at a time in a process. How many commands the host has sent.
std::size_t runSession(const std::uint8_t* bytes, std::size_t size);

}  // namespace session_fuzz
