#include "tintwell_host/files/memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include "tintwell_host/files/failure.h"

namespace program {

MemoryFile::MemoryFile() : descriptor_(::memfd_create("tintwell-host", MFD_CLOEXEC)) {
    if (descriptor_ < 0) throw Failure("there is no memory for a file");
    path_ = "/proc/self/fd/" + std::to_string(descriptor_);
}

MemoryFile::~MemoryFile() {
    ::close(descriptor_);
}

}  // namespace program
