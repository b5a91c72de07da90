#include "native/src/row_forms.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>

#include "native/src/x86_features.h"

namespace tw {
namespace {

constexpr std::size_t kMostForms = 4;

struct FormList {
    std::array<RowForms, kMostForms> forms;
    std::size_t count = 0;

    void add(const RowForms& form) { forms[count++] = form; }
};

// Each x86 form asks for exactly the features that its file is compiled for.
FormList findRunnable() {
    FormList list;
    list.add({"scalar", applyRow8Scalar, applyRowFScalar, applyRowFScalar});
#if defined(__x86_64__)
    const X86Features x86 = x86Features();
    if (x86.sse41) list.add({"sse4.1", applyRow8Sse41, applyRowFSse41, streamRowFSse41});
    if (x86.avx2) list.add({"avx2", applyRow8Avx2, applyRowFAvx2, streamRowFAvx2});
    if (x86.avx512f && x86.avx512bw && x86.avx512dq && x86.avx512vl)
        list.add({"avx512", applyRow8Avx512, applyRowFAvx512, streamRowFAvx512});
#elif defined(__aarch64__)
    list.add({"neon", applyRow8Neon, applyRowFNeon, applyRowFNeon});
#endif
    return list;
}

std::atomic<const RowForms*> forced{nullptr};

}  // namespace

std::span<const RowForms> runnableRowForms() {
    static const FormList list = findRunnable();
    return {list.forms.data(), list.count};
}

const RowForms& rowForms() {
    const RowForms* form = forced.load(std::memory_order_relaxed);
    return form ? *form : runnableRowForms().back();
}

bool forceRowForms(const char* name) {
    const RowForms* wanted = nullptr;
    for (const RowForms& form : runnableRowForms()) {
        if (name && std::string_view(form.name) == name) wanted = &form;
    }
    if (name && !wanted) return false;
    forced.store(wanted, std::memory_order_relaxed);
    return true;
}

}  // namespace tw
