// Preloaded into the program: a file server that goes away while `server.mov` is read. Its second
// half cannot be had any more.
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>

namespace {

bool isGone(int descriptor) {
    char name[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = ::readlink(link.c_str(), name, sizeof name);
    if (length < 0) return false;
    if (!std::string_view(name, static_cast<std::size_t>(length)).ends_with("/server.mov")) {
        return false;
    }
    struct stat facts = {};
    return ::fstat(descriptor, &facts) == 0 &&
           ::lseek(descriptor, 0, SEEK_CUR) >= facts.st_size / 2;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) ssize_t read(int descriptor, void* to,
                                                               size_t size) {
    if (!isGone(descriptor)) return ::syscall(SYS_read, descriptor, to, size);
    errno = EIO;
    return -1;
}
