// The files that a command is given.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tintwell_host/files/failure.h"

namespace program {

// Calls `read` for each. One of several that is Unreadable is told on standard error and leaves the
// others; returns what the command is to fail with in the end, nothing when all were read. Throws
// what `read` throws for any other reason, or for the only file.
std::optional<Failure> readEach(const std::vector<std::string>& files,
                                const std::function<void(const std::string&)>& read);

}  // namespace program
