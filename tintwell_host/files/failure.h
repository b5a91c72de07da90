// The one way in which a command of tintwell-host ends early.
#pragma once

#include <stdexcept>
#include <string>

namespace program {

// What the program's exit status tells a script or a render farm.
enum class Exit {
    kWrongInput = 1,     // a file or a look that cannot be used: trying again will not help
    kWrongUsage = 2,     // options that do not go together
    kTryAgain = 75,      // a full disk, a file server that went away, too little memory
    kInterrupted = 130,  // SIGINT: what was begun is finished
    kTerminated = 143,   // SIGTERM: the same
};

// What a failed system call means for the program, by its errno.
Exit exitFor(int error);

// what() is one sentence for the user, naming the file and the reason. main() prints it and exits
// with exit(); nothing half-written is left behind.
class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& sentence, Exit exit = Exit::kWrongInput)
        : std::runtime_error(sentence), exit_(exit) {}

    Exit exit() const { return exit_; }

private:
    Exit exit_;
};

// Of a file that cannot be read, which leaves others that can.
class Unreadable : public Failure {
public:
    Unreadable(const std::string& path, const std::string& reason, Exit exit = Exit::kWrongInput)
        : Failure("cannot read '" + path + "': " + reason, exit) {}
    // By errno.
    Unreadable(const std::string& path, int error);
};

}  // namespace program
