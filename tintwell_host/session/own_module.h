// The effect that lies beside the program.
#pragma once

#include <filesystem>

namespace program {

// Its module as the build leaves it there, whether it exists or not. Throws what
// std::filesystem throws.
std::filesystem::path moduleBesideProgram();

}  // namespace program
