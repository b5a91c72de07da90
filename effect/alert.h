// User-visible messages of the effect.
#pragma once

#include <string>

namespace tw_effect {

// Shows `message` in the native alert and returns when the user has closed it. `warning` picks the
// warning style, else it is informational. Threads: any, as tw_mac::Alert.
void Alert(const std::wstring& message, bool warning);

}  // namespace tw_effect
