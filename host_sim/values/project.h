// A saved effect: the project file of the simulated host.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host_api/parameters.h"

namespace host_sim {

struct SavedParam {
    A_long id = 0;  // by which a later session finds the parameter
    PF_ParamType type = 0;
    std::string name;
    double number = 0.0;                            // of a slider
    std::optional<std::vector<std::uint8_t>> flat;  // of an arbitrary value; none when it was null
};

struct SavedEffect {
    std::string matchName;
    std::vector<SavedParam> params;  // those that have values
};

// The bytes of its file.
std::vector<std::uint8_t> projectBytes(const SavedEffect& effect);

// Writes a temporary file beside `file` and renames it, so that an old project is replaced whole or
// not at all. Throws ProjectError.
void writeProject(const std::filesystem::path& file, const SavedEffect& effect);

// Throws ProjectError for a file that cannot be read, is cut off or damaged, or is no project.
SavedEffect readProject(const std::filesystem::path& file);

}  // namespace host_sim
