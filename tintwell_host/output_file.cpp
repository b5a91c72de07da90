#include "tintwell_host/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <system_error>

#include "tintwell_host/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

// Without the file's own name, which may be as long as names can be.
fs::path partialName(const fs::path& path) {
    return path.parent_path() / (".partial-" + std::to_string(::getpid()));
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

std::string readText(const std::string& path) {
    if (path == "-") return readStream(std::cin);
    std::error_code unknown;
    if (fs::is_directory(path, unknown)) {
        throw Failure("cannot read '" + path + "': it is a folder");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) throw Failure("cannot read '" + path + "': " + reason());
    std::string text = readStream(in);
    if (in.bad()) throw Failure("cannot read '" + path + "': " + reason());
    return text;
}

void writeWhole(const std::string& path, std::string_view bytes) {
    const fs::path partial = partialName(path);
    std::ofstream out(partial, std::ios::binary);
    if (!out) throw Failure("cannot write '" + path + "': " + reason());
    out << bytes;
    // Some disks tell only now that they are full.
    out.close();
    std::string why = reason();
    std::error_code failed;
    if (out) {
        fs::rename(partial, path, failed);
        if (!failed) return;
        why = failed.message();
    }
    fs::remove(partial, failed);
    throw Failure("cannot write '" + path + "': " + why);
}

}  // namespace program
