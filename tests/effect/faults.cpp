#include "tests/effect/faults.h"

#include <dlfcn.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> callsUntilFailure{0};
std::atomic<std::size_t> refusedBytes{0};

}  // namespace

namespace twtest {

void failRead(int nth) {
    callsUntilFailure = nth;
}

void failAllocationsFrom(std::size_t bytes) {
    refusedBytes = bytes;
}

bool canFailAllocations() {
    failAllocationsFrom(1);
    bool failed = false;
    try {
        ::operator delete(::operator new(1));
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    failAllocationsFrom(0);
    return failed;
}

}  // namespace twtest

// The program exports what follows, so that it is found before the system libraries' own. Weak, so
// that ThreadSanitizer's operators, which come with the program, win.

extern "C" __attribute__((visibility("default"))) std::size_t fread(void* buffer, std::size_t size,
                                                                    std::size_t count,
                                                                    std::FILE* file) {
    static const auto real = reinterpret_cast<decltype(&fread)>(dlsym(RTLD_NEXT, "fread"));
    if (callsUntilFailure > 0 && --callsUntilFailure == 0) return 0;
    return real(buffer, size, count, file);
}

__attribute__((weak)) void* operator new(std::size_t size) {
    const std::size_t refused = refusedBytes;
    if (refused != 0 && size >= refused) throw std::bad_alloc();
    void* block = std::malloc(size != 0 ? size : 1);
    if (!block) throw std::bad_alloc();
    return block;
}

__attribute__((weak)) void operator delete(void* block) noexcept {
    std::free(block);
}

__attribute__((weak)) void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}
