// What the Edit LUT button writes for the companion panel.
#pragma once

#include <cstdint>
#include <string>

namespace tw_effect {

// The request as one line, with its line feed: {"id":7,"name":"Dusk","at":1732100000000}. `at` is
// in milliseconds since 1970 UTC. Only backslashes and double quotes of the name are escaped. Cut
// at 599 bytes, wherever that falls.
std::string editRequestLine(std::int64_t id, const std::string& name, std::int64_t at);

}  // namespace tw_effect
