#include "tests/effect/failing_allocations.h"

#include <cstdlib>
#include <new>

// ThreadSanitizer brings operators that cannot be replaced.
#if defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TINTWELL_FIXED_OPERATORS
#endif
#endif

namespace {

#ifdef TINTWELL_FIXED_OPERATORS
constexpr bool kOperatorsAreFixed = true;
#else
constexpr bool kOperatorsAreFixed = false;
#endif

struct Failing {
    std::size_t least = 1;
    std::size_t most = 0;
    int count = 0;
};

thread_local Failing failing;

}  // namespace

namespace effect_test {

FailingAllocations::FailingAllocations(std::size_t least, std::size_t most) {
    failing = {least, most, 0};
}

FailingAllocations::~FailingAllocations() {
    failing = {};
}

int FailingAllocations::count() const {
    return failing.count;
}

bool FailingAllocations::isPossible() {
    return !kOperatorsAreFixed;
}

}  // namespace effect_test

#ifndef TINTWELL_FIXED_OPERATORS

// The library's other forms of new and delete end in these.
void* operator new(std::size_t size) {
    if (size >= failing.least && size <= failing.most) {
        ++failing.count;
        throw std::bad_alloc();
    }
    if (void* block = std::malloc(size == 0 ? 1 : size)) return block;
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept {
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

#endif
