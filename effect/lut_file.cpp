#include "effect/lut_file.h"

#include <cstdio>

#include "native/src/file.h"
#include "native/src/paths.h"

namespace tw_effect {
namespace {

constexpr std::size_t kReadBytes = 65536;

std::string readWhole(const std::wstring& path) {
    std::string contents;
    const tw::File file(tw::openFile(path, "rb"));
    if (!file) return contents;
    char buffer[kReadBytes];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) {
        contents.append(buffer, count);
    }
    return contents;
}

}  // namespace

tw::LutFileResult loadLutFile(const std::wstring& path, tw::LutFile& file, std::string& reason) {
    return tw::judgeLutFile(readWhole(path), path, file, reason);
}

}  // namespace tw_effect
