#include "host_sim/program/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include "host_sim/program/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

std::string partialName(const fs::path& path) {
    const std::string stem = "." + path.stem().string() + ".partial-" + std::to_string(::getpid());
    return (path.parent_path() / (stem + path.extension().string())).string();
}

void removeQuietly(const std::string& path) {
    std::error_code ignored;
    fs::remove(path, ignored);
}

std::string reason() {
    return std::strerror(errno);
}

std::string readStream(std::istream& in) {
    std::string text;
    char buffer[4096];
    while (in.read(buffer, sizeof buffer), in.gcount() > 0) {
        text.append(buffer, static_cast<std::size_t>(in.gcount()));
    }
    return text;
}

}  // namespace

void writeWhole(const std::string& path, const std::function<void(const std::string&)>& write) {
    const std::string partial = partialName(path);
    try {
        write(partial);
        std::error_code failed;
        fs::rename(partial, path, failed);
        if (failed) throw Failure("cannot write '" + path + "': " + failed.message());
    } catch (...) {
        removeQuietly(partial);
        throw;
    }
}

std::string readText(const std::string& path) {
    if (path == "-") return readStream(std::cin);
    if (fs::is_directory(path)) throw Failure("cannot read '" + path + "': it is a folder");
    std::ifstream in(path, std::ios::binary);
    if (!in) throw Failure("cannot read '" + path + "': " + reason());
    std::string text = readStream(in);
    if (in.bad()) throw Failure("cannot read '" + path + "': " + reason());
    return text;
}

void writeText(const std::string& path, const std::string& text) {
    writeWhole(path, [&](const std::string& partial) {
        std::ofstream out(partial, std::ios::binary);
        out << text << std::flush;
        if (!out) throw Failure("cannot write '" + path + "': " + reason());
    });
}

}  // namespace program
