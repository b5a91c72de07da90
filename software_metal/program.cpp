#include "software_metal/program.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace software_metal {
namespace {

pid_t start(const std::vector<std::string>& arguments, int output, int* error) {
    std::vector<char*> words;
    for (const std::string& word : arguments)
        words.push_back(const_cast<char*>(word.c_str()));
    words.push_back(nullptr);

    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_adddup2(&streams, output, STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&streams, output, STDERR_FILENO);
    pid_t child = -1;
    *error = posix_spawnp(&child, words[0], &streams, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    return *error == 0 ? child : -1;
}

std::string readAll(int file) {
    std::string text;
    char part[4096];
    for (;;) {
        const ssize_t count = ::read(file, part, sizeof part);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return text;
        text.append(part, static_cast<std::size_t>(count));
    }
}

}  // namespace

ProgramResult runProgram(const std::vector<std::string>& arguments) {
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) return {-1, std::strerror(errno)};
    int error = 0;
    const pid_t child = start(arguments, ends[1], &error);
    ::close(ends[1]);
    ProgramResult result;
    if (child < 0) {
        result.output = arguments[0] + ": " + std::strerror(error);
    } else {
        result.output = readAll(ends[0]);
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        if (WIFEXITED(status)) result.status = WEXITSTATUS(status);
    }
    ::close(ends[0]);
    return result;
}

}  // namespace software_metal
