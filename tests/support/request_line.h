// The line with which the Edit LUT button asks for a match.
#pragma once

#include <algorithm>
#include <string>

namespace twtest {

// Whether this is the whole request for that match, of whatever time. The name as it stands in the
// line.
inline bool isRequest(const std::string& line, long id, const std::string& name) {
    const std::string start =
        "{\"id\":" + std::to_string(id) + ",\"name\":\"" + name + "\",\"at\":";
    if (!line.starts_with(start) || !line.ends_with("}\n")) return false;
    const std::string time = line.substr(start.size(), line.size() - start.size() - 2);
    return !time.empty() && std::all_of(time.begin(), time.end(),
                                        [](char digit) { return digit >= '0' && digit <= '9'; });
}

}  // namespace twtest
