// The .cube file that the LUT button was given.
#pragma once

#include <string>

#include "native/src/judge_cube.h"

namespace tw_effect {

// tw::judgeLutFile with the contents read from the file: none when it cannot be opened, those
// before it when there is a read error. Reads through a buffer of 64 KiB on the stack. Threads:
// any. Throws what strings and vectors throw.
tw::LutFileResult loadLutFile(const std::wstring& path, tw::LutFile& file, std::string& reason);

}  // namespace tw_effect
