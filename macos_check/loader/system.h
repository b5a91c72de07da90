// What a macOS bundle imports, found on Linux.
#pragma once

#include <string_view>

#include "macos_check/loader/bytes.h"

namespace macho {

// The address behind a linker name ("_fopen"). Most names mean the same on both systems and come
// from Debian's C library and libc++; where the systems differ in layouts or constants, a stand-in
// translates. A name that is known nowhere gives a function that says so and ends the process when
// it is called. Throws std::runtime_error without libc++ on the machine.
//
// The bundle gets a libc++ with an unwinder of its own, whatever C++ library this process has: the
// two never meet, as no exception may leave the bundle.
void* resolveImport(std::string_view name);

// Hands a call-frame record to that unwinder.
void registerFrame(const Byte* record);

}  // namespace macho
