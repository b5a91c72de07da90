// Runs another program.
#pragma once

#include <string>
#include <vector>

namespace software_metal {

struct ProgramResult {
    int status = -1;     // exit status; -1 when it could not be started or was killed
    std::string output;  // both streams, or why it could not be started
};

// The first argument is looked up in PATH. Throws std::bad_alloc only.
ProgramResult runProgram(const std::vector<std::string>& arguments);

}  // namespace software_metal
