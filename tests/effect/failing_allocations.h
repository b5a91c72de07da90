// Makes memory run out at a chosen place. The test program's operator new is also the one that the
// module uses, so that allocations inside the effect can be made to fail.
#pragma once

#include <cstddef>
#include <limits>

namespace effect_test {

// While it lives, operator new throws std::bad_alloc on the thread that made it for sizes from
// `least` to `most` bytes. A size tells the effect's allocation from the simulated host's own.
class FailingAllocations {
public:
    explicit FailingAllocations(std::size_t least,
                                std::size_t most = std::numeric_limits<std::size_t>::max());
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    // How many allocations have failed.
    int count() const;

    // Whether it works: not under ThreadSanitizer, which has operators of its own.
    static bool isPossible();
};

}  // namespace effect_test
