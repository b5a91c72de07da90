#include "effect/edit_request_line.h"

#include <cstdio>

namespace tw_effect {
namespace {

std::string escaped(const std::string& name) {
    std::string text;
    for (const char c : name) {
        if (c == '\\' || c == '"') text.push_back('\\');
        text.push_back(c);
    }
    return text;
}

}  // namespace

std::string editRequestLine(std::int64_t id, const std::string& name, std::int64_t at) {
    char line[600];
    std::snprintf(line, sizeof line, "{\"id\":%ld,\"name\":\"%s\",\"at\":%lld}\n",
                  static_cast<long>(id), escaped(name).c_str(), static_cast<long long>(at));
    return line;
}

}  // namespace tw_effect
