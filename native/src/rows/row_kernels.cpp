#include "native/src/rows/row_kernels.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>

#include "native/src/rows/x86_features.h"

namespace tw {
namespace {

constexpr std::size_t kMostKernels = 4;

struct KernelList {
    std::array<RowKernels, kMostKernels> kernels;
    std::size_t count = 0;

    void add(const RowKernels& kernel) { kernels[count++] = kernel; }
};

// Each x86 kernel asks for exactly the features that its file is compiled for.
KernelList findRunnable() {
    KernelList list;
    list.add(kScalarRows);
#if defined(__x86_64__)
    const X86Features x86 = x86Features();
    if (x86.sse41) list.add(kSse41Rows);
    if (x86.avx2) list.add(kAvx2Rows);
    if (x86.avx512f && x86.avx512bw && x86.avx512dq && x86.avx512vl) list.add(kAvx512Rows);
#elif defined(__wasm_simd128__)
    list.add(kSse41Rows);
#elif defined(__aarch64__)
    list.add(kNeonRows);
#endif
    return list;
}

std::atomic<const RowKernels*> forced{nullptr};

}  // namespace

std::span<const RowKernels> runnableRowKernels() {
    static const KernelList list = findRunnable();
    return {list.kernels.data(), list.count};
}

const RowKernels& rowKernels() {
    const RowKernels* kernel = forced.load(std::memory_order_relaxed);
    return kernel ? *kernel : runnableRowKernels().back();
}

bool forceRowKernels(const char* name) {
    const RowKernels* wanted = nullptr;
    for (const RowKernels& kernel : runnableRowKernels()) {
        if (name && std::string_view(kernel.name) == name) wanted = &kernel;
    }
    if (name && !wanted) return false;
    forced.store(wanted, std::memory_order_relaxed);
    return true;
}

}  // namespace tw
