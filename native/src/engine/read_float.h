// A faster strtof for decimal numbers. Internal to the engine.
#pragma once

namespace tw {

// Exactly strtof(at, stop): same white space skipped, same texts taken for numbers, same bits,
// same *stop. `at` must end with a zero byte somewhere; numbers are read as in the calling thread's
// locale, which must be the C one (CLocaleScope). Threads: any; never throws.
float readFloat(const char* at, const char** stop);

}  // namespace tw
