// The streams of bytes in a file: the file itself, or what it has packed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace program {

// How far packed files are followed.
struct StreamLimits {
    int depth = 4;  // packed files in one another
    // Bytes that may come out of a file: so many, and so many more for each byte read of it.
    std::uint64_t bytes = std::uint64_t{1} << 28;
    std::uint64_t ratio = 256;
};

class StreamVisitor {
public:
    virtual ~StreamVisitor() = default;
    // A stream begins. `name` is the file's, followed by those of the members it lies in:
    // "all.zip/one.prproj".
    virtual void begin(const std::string& name) = 0;
    // Its bytes, piece by piece. The memory is valid for the call.
    virtual void bytes(const char* bytes, std::size_t count) = 0;
    virtual void end() = 0;
    // One sentence on what could not be read; the streams go on behind it where they can.
    virtual void warn(const std::string& sentence) = 0;
};

// Visits the streams of `file` ("-": standard input): members of zip files and what gzip packed,
// also within one another; anything else is one stream. Holds little of it at a time. Throws
// Unreadable for a file that cannot be read to its end, and what the visitor throws.
void readStreams(const std::string& file, StreamVisitor& visitor, const StreamLimits& limits = {});

}  // namespace program
