// The two dialogs in the terminal, for machines without a window system to build against.
#include "platform/mac/dialogs.h"

#include <sys/stat.h>

#include <cstdio>

#include "native/src/file.h"

namespace tw_mac {
namespace {

// The controlling terminal, not the standard streams: those may belong to a program that reads the
// host's output. Null without a terminal.
tw::File openTerminal() {
    tw::File terminal(std::fopen("/dev/tty", "r+"));
    if (terminal) std::setvbuf(terminal.get(), nullptr, _IONBF, 0);
    return terminal;
}

// One line without its end; empty at the end of the input.
std::string readLine(std::FILE* terminal) {
    std::string line;
    for (int c = std::fgetc(terminal); c != EOF && c != '\n'; c = std::fgetc(terminal)) {
        line.push_back(static_cast<char>(c));
    }
    return line;
}

bool isFile(const std::string& path) {
    struct stat status;
    return stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

}  // namespace

std::string PickCube(const std::string& folder) {
    const tw::File terminal = openTerminal();
    if (!terminal) return {};
    std::fprintf(terminal.get(),
                 "Tintwell: choose a LUT\n"
                 "Choose a .cube LUT to store in this Tintwell effect.\n"
                 "Folder: %s\n",
                 folder.c_str());
    while (true) {
        std::fputs("File (empty to cancel): ", terminal.get());
        std::string path = readLine(terminal.get());
        if (path.empty()) return path;
        if (path.front() != '/' && !folder.empty()) path = folder + "/" + path;
        if (isFile(path)) return path;
        std::fprintf(terminal.get(), "No such file: %s\n", path.c_str());
    }
}

void Alert(const std::string& message, bool warning) {
    const tw::File terminal = openTerminal();
    if (!terminal) return;
    std::fprintf(terminal.get(), "Tintwell%s\n%s\nPress Return: ", warning ? " (warning)" : "",
                 message.c_str());
    readLine(terminal.get());
}

}  // namespace tw_mac
