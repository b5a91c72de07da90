// Which kernel grades the rows of apply8 and applyF. Internal to the engine.
#pragma once

#include <span>

#include "native/src/rows/row_kernel.h"

namespace tw {

// The kernels that this processor and this system can run, the plainest ("scalar") first, the
// quickest last. Valid for the life of the process.
std::span<const RowKernels> runnableRowKernels();

// The kernel in use: the quickest one, unless another is forced. Asks the processor once.
const RowKernels& rowKernels();

// For tests and benchmarks: uses the named kernel from now on, null the quickest one again. False,
// and nothing changes, when this machine cannot run it. Threads: any, but calls of apply8 and
// applyF that are under way may finish with either kernel.
bool forceRowKernels(const char* name);

}  // namespace tw
