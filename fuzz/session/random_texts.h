// What panels, projects and files may hand to the effect: whole TWLUT texts and .cube files, and
// damaged ones that still pass the first checks.
#pragma once

#include <string>

#include "fuzz/session/script.h"

namespace session_fuzz {

// A form of TWLUT text as it is written, damaged in one place or not, or the record's own text.
std::string makeText(Record& record);

// Bytes for the LUT parameter: such a text as 16-bit units or otherwise, or the record's own bytes.
Bytes makeBytes(Record& record);

// The same for the contents of a .cube file.
std::string makeCube(Record& record);

}  // namespace session_fuzz
