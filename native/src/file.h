// An open file that closes itself.
#pragma once

#include <cstdio>
#include <memory>

namespace tw {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Owns what openFile or std::fopen gave; null when that failed.
using File = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace tw
