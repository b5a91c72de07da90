// Exceptions of the simulated host. They mean that the simulation cannot go on; what an effect does
// wrong is written into the Books instead, and what an effect answers comes back as a
// CommandResult.
#pragma once

#include <stdexcept>

namespace host_sim {

// The text is one sentence for a person.
class SimError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A project file that cannot be written, or read, or belongs to something else; names the file.
class ProjectError : public SimError {
public:
    using SimError::SimError;
};

}  // namespace host_sim
