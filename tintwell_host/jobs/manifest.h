// Fingerprints of the files of one render, for formats that have no room for them: a text file
// beside the output, one line a file.
#pragma once

#include <mutex>
#include <string>

namespace program {

// Processes and machines may add to one manifest at once; a line that was cut off does not count.
//
// Threads: any.
class Manifest {
public:
    // Of the files that `out`, a picture or a sequence, names.
    explicit Manifest(const std::string& out);

    // The fingerprint that was noted last for a file with just these contents; empty: none.
    std::string find(const std::string& file, const std::string& contents) const;

    // Throws Failure.
    void add(const std::string& file, const std::string& contents, const std::string& fingerprint);

private:
    std::string path_;
    mutable std::mutex mutex_;
};

}  // namespace program
