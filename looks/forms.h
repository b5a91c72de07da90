// A LUT in the forms that it is kept in: a .cube file and the text of the effect's LUT parameter.
#pragma once

#include <string>

#include "native/src/lut_engine.h"

namespace looks {

// The TWLUT text of a .cube file by the rules of the effect's LUT button; `path` gives the name.
// False when the button would refuse it, with why in `reason`, to be said behind the file's name.
// Threads: any. Throws what strings and vectors throw.
bool textFromCube(const std::string& contents, const std::wstring& path, std::string& text,
                  std::string& reason);

// The .cube text of a LUT with size >= 2, with a title and, for a LUT with a match id, the match
// comment. The same.
std::string writeCube(const tw::Lut3D& lut);

// The TWLUT3 text of a LUT, with its id and name. False when the effect could not read the same
// back, with the reason in one sentence in `reason`. The same.
bool writeText(const tw::Lut3D& lut, std::string& text, std::string& reason);

}  // namespace looks
