#include "tintwell_host/files/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "tintwell_host/files/failure.h"

namespace program {

MemoryFile::MemoryFile() : descriptor_(::memfd_create("tintwell-host", MFD_CLOEXEC)) {
    if (descriptor_ < 0) {
        throw Failure(std::string("cannot make a file in memory: ") + std::strerror(errno),
                      exitFor(errno));
    }
    path_ = "/proc/self/fd/" + std::to_string(descriptor_);
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

}  // namespace program
