#include "native/src/rows/x86_features.h"

#if defined(__x86_64__)
#include <cpuid.h>

namespace tw {
namespace {

// Feature bits of the cpuid instruction.
constexpr unsigned kSse41 = 1u << 19;    // leaf 1, ecx
constexpr unsigned kOsXsave = 1u << 27;  // leaf 1, ecx
constexpr unsigned kAvx2 = 1u << 5;      // leaf 7, ebx, as the rest
constexpr unsigned kAvx512F = 1u << 16;
constexpr unsigned kAvx512Dq = 1u << 17;
constexpr unsigned kAvx512Bw = 1u << 30;
constexpr unsigned kAvx512Vl = 1u << 31;

// Bits of XCR0: the registers that the system saves when it switches threads.
constexpr unsigned kYmmState = 0x06;
#if defined(__APPLE__)
// macOS reports the widest registers as saved only from their first use in the process on.
constexpr unsigned kZmmState = kYmmState;
#else
constexpr unsigned kZmmState = 0xE6;
#endif

unsigned savedState() {
    unsigned low;
    unsigned high;
    // In assembly, as the intrinsic would need a compiler option.
    asm("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
    return low;
}

}  // namespace

X86Features x86Features() {
    X86Features found;
    unsigned eax, ebx, ecx, edx;
    if (!__get_cpuid(1, &eax, &ebx, &ecx, &edx)) return found;
    found.sse41 = (ecx & kSse41) != 0;
    if ((ecx & kOsXsave) == 0) return found;
    const unsigned state = savedState();
    if (!__get_cpuid_count(7, 0, &eax, &ebx, &ecx, &edx)) return found;
    found.avx2 = (state & kYmmState) == kYmmState && (ebx & kAvx2) != 0;
    if ((state & kZmmState) != kZmmState) return found;
    found.avx512f = (ebx & kAvx512F) != 0;
    found.avx512bw = (ebx & kAvx512Bw) != 0;
    found.avx512dq = (ebx & kAvx512Dq) != 0;
    found.avx512vl = (ebx & kAvx512Vl) != 0;
    return found;
}

}  // namespace tw

#endif
