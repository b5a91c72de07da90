// The one way in which a command of tintwell-host ends early.
#pragma once

#include <stdexcept>

namespace program {

// what() is one sentence for the user, naming the file and the reason. main() prints it and exits
// with 1; nothing half-written is left behind.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace program
