#include "tests/effect/failing_reads.h"

#include <dlfcn.h>

#include <cstdio>

namespace {

int callsUntilFailure = 0;

}  // namespace

namespace twtest {

void failRead(int nth) {
    callsUntilFailure = nth;
}

}  // namespace twtest

// Exported by the program, and so found before the system's.
extern "C" __attribute__((visibility("default"))) std::size_t fread(void* buffer, std::size_t size,
                                                                    std::size_t count,
                                                                    std::FILE* file) {
    static const auto real = reinterpret_cast<decltype(&fread)>(dlsym(RTLD_NEXT, "fread"));
    if (callsUntilFailure > 0 && --callsUntilFailure == 0) return 0;
    return real(buffer, size, count, file);
}
