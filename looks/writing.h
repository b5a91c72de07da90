// A LUT in the forms that it is kept in: a .cube file and the text of the effect's LUT parameter.
#pragma once

#include <string>

#include "native/src/lut_engine.h"

namespace looks {

// The .cube text of a LUT with size >= 2, with a title and, for a LUT with a match id, the match
// comment. Threads: any. Throws what strings throw.
std::string writeCube(const tw::Lut3D& lut);

// The TWLUT3 text of a LUT, with its id and name. False when the effect could not read the same
// back, with the reason in one sentence in `reason`. The same.
bool writeText(const tw::Lut3D& lut, std::string& text, std::string& reason);

}  // namespace looks
