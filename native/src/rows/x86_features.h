// What an x86-64 processor offers and the system lets programs use.
#pragma once

#if defined(__x86_64__)

namespace tw {

// A feature is true when the processor has the instructions and the system saves the registers
// they work on.
struct X86Features {
    bool sse41 = false;
    bool avx2 = false;
    bool avx512f = false;
    bool avx512bw = false;
    bool avx512dq = false;
    bool avx512vl = false;
};

X86Features x86Features();

}  // namespace tw

#endif
