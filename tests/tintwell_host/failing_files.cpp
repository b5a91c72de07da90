#include "tests/tintwell_host/failing_files.h"

#include <dirent.h>
#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

#define STAND_IN __attribute__((visibility("default")))

namespace {

// Calls that go well before the others fail, by the error; 0: all go well.
struct Failing {
    int left = 0;
    int error = 0;

    bool isNow() {
        if (error == 0 || left-- > 0) return false;
        errno = error;
        return true;
    }
};

Failing entries;
Failing reads;
Failing making;

template <class Function>
Function* real(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

namespace program_test {

void failEntriesAfter(int count, int error) {
    entries = {count, error};
}

void failReadsAfter(int count, int error) {
    reads = {count, error};
}

void failMaking(int error) {
    making = {0, error};
}

}  // namespace program_test

extern "C" {

STAND_IN dirent* readdir(DIR* folder) {
    static auto* const next = real<decltype(readdir)>("readdir");
    return entries.isNow() ? nullptr : next(folder);
}

STAND_IN ssize_t read(int file, void* bytes, std::size_t count) {
    static auto* const some = real<decltype(read)>("read");
    return reads.isNow() ? -1 : some(file, bytes, count);
}

STAND_IN int mkdir(const char* path, mode_t mode) noexcept {
    static auto* const make = real<decltype(mkdir)>("mkdir");
    return making.isNow() ? -1 : make(path, mode);
}

}  // extern "C"
