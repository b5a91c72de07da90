// Faults of the system for a whole test program, the module that it loads included.
#pragma once

#include <cstddef>

namespace twtest {

// The nth call of fread from now on, 1 being the next, reads nothing, as when a disk fails.
void failRead(int nth);

// From now on operator new throws std::bad_alloc for that many bytes or more; 0: never.
void failAllocationsFrom(std::size_t bytes);
// Whether that works: not where a sanitizer has the allocator for itself.
bool canFailAllocations();

}  // namespace twtest
