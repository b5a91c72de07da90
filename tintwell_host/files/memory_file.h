// A file without a disk below it, where the system has that.
#pragma once

#include <string>

namespace program {

// Empty at first, gone with the object. Picture libraries write into it, since they cannot be
// trusted with a disk that is full: some take a file that was cut off for written, one ends the
// process.
class MemoryFile {
public:
    // Throws Failure when the system has no memory for it, or gives the process no more files.
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    // To open it by, in this process.
    const std::string& path() const { return path_; }

private:
    int descriptor_ = -1;
    std::string path_;
};

}  // namespace program
