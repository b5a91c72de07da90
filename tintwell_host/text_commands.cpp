#include <cstdio>
#include <filesystem>

#include "looks/forms.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/home.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

void print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace

void runEncode(const std::string& cube) {
    print(textFromCube(cube) + "\n");
}

void runDecode(const std::string& text, const std::string& cube) {
    const tw::Lut3D lut = lutFromText(readText(text), text);
    if (lut.size == 0) throw Failure("cannot write '" + cube + "': '" + text + "' holds no LUT");
    writeWhole(cube, looks::writeCube(lut));
}

void runLog() {
    const std::string file = logFile();
    if (!std::filesystem::exists(file)) {
        std::fprintf(stderr, "the effect has logged nothing yet in '%s'\n", file.c_str());
        return;
    }
    print(readText(file));
}

}  // namespace program
