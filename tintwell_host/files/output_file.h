// Files that appear whole or not at all.
#pragma once

#include <string>
#include <string_view>

namespace program {

// Writes a file beside `path` and renames it to `path`. When that fails nothing of it is left,
// `path` is as it was, and Failure is thrown. Threads: any.
void writeWhole(const std::string& path, std::string_view bytes);

// A file that is written under another name beside `path`, by somebody who needs a name to write
// to. Locked as long as this lives, so that others can tell it from what a killed run has left, and
// take another name.
class PartialFile {
public:
    explicit PartialFile(const std::string& path);
    // Removes what was not kept.
    ~PartialFile();
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;

    const std::string& name() const { return name_; }
    // Gives it its name. Throws Failure.
    void keep();

private:
    std::string path_;
    std::string name_;
    int lock_ = -1;  // descriptor; -1: the file cannot be made, as its writer will find
    bool isKept_ = false;
};

// Removes what runs of the program that were killed have left in the folder of `path`: of runs on
// this machine alone, as not every file server shares locks.
void removeLeftovers(const std::string& path);

// The whole of a file, or of standard input for "-". Throws Failure.
std::string readText(const std::string& path);

}  // namespace program
