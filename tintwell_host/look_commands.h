// The commands of tintwell-host on looks, without a host and the effect's module. Each prints its
// result on standard output and throws Failure for wrong input. Where there are several files, one
// that cannot be read leaves the others: Failure comes at the end.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace program {

struct LooksOptions {
    std::vector<std::string> files;
    bool json = false;
    std::string extract;  // folder; empty: none
};
void runLooks(const LooksOptions& options);

struct CheckOptions {
    std::vector<std::string> files;
    bool json = false;
};
// Throws Failure after the last look when one of them would not work.
void runCheck(const CheckOptions& options);

struct ShowOptions {
    std::string look;
    std::string compare;  // another look; empty: none
    std::string picture;  // empty: the computed one
    std::string out;
};
void runShow(const ShowOptions& options);

// Adds them to the program.
void addLookCommands(CLI::App& app);

}  // namespace program
