// .cube files and TWLUT texts as the commands take and give them.
#pragma once

#include <string>

#include "native/src/lut_engine.h"

namespace program {

// The TWLUT text of a .cube file by the rules of the effect's LUT button. Throws Failure with the
// button's reason for refusing it.
std::string textFromCube(const std::string& path);

// The LUT of a TWLUT text. `origin` names the text in messages. Throws Failure.
tw::Lut3D lutFromText(const std::string& text, const std::string& origin);

// One line about a LUT: name, match, points, range.
std::string describeLut(const tw::Lut3D& lut);

}  // namespace program
