// Where the system has no files without a disk, a temporary one.
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/memory_file.h"

namespace program {

MemoryFile::MemoryFile() {
    std::error_code ignored;
    path_ = (std::filesystem::temp_directory_path(ignored) / "tintwell-host.XXXXXX").string();
    descriptor_ = ::mkstemp(path_.data());
    if (descriptor_ < 0) {
        throw Failure(std::string("cannot make a temporary file: ") + std::strerror(errno),
                      exitFor(errno));
    }
}

MemoryFile::~MemoryFile() {
    ::unlink(path_.c_str());
    ::close(descriptor_);
}

}  // namespace program
