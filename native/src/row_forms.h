// Which form grades the rows of apply8 and applyF. Internal to the engine.
#pragma once

#include <span>

#include "native/src/apply_rows.h"

namespace tw {

struct RowForms {
    const char* name;  // "scalar", "sse4.1", "avx2", "avx512", "neon"
    RowForm8* row8;
    RowFormF* rowF;
    RowFormF* streamF;  // rowF for pictures that no cache holds; the same where there is no other
};

// The forms that this processor and this system can run, the plainest ("scalar") first, the
// quickest last. Valid for the life of the process.
std::span<const RowForms> runnableRowForms();

// The form in use: the quickest one, unless another is forced. Asks the processor once.
const RowForms& rowForms();

// For tests and benchmarks: uses the named form from now on, null the quickest one again. False,
// and nothing changes, when this machine cannot run it. Threads: any, but calls of apply8 and
// applyF that are under way may finish with either form.
bool forceRowForms(const char* name);

}  // namespace tw
