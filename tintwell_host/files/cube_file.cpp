#include "tintwell_host/files/cube_file.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>

#include "native/src/judge_cube.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"

namespace program {
namespace {

// Quotes and control characters would end the title early.
std::string titleOf(const tw::Lut3D& lut) {
    std::string title = lut.name;
    std::replace_if(
        title.begin(), title.end(),
        [](unsigned char c) { return c == '"' || std::iscntrl(c) != 0; }, '_');
    return title;
}

}  // namespace

std::string textFromCube(const std::string& path) {
    // Read here, and once: the button's rules do not tell a file that cannot be opened from one
    // that is empty, they spell a path in their own way, and a pipe gives its contents only once.
    const std::string contents = readText(path);
    if (contents.empty()) throw Failure("cannot use '" + path + "': the file is empty");
    tw::LutFile file;
    std::string reason;
    switch (tw::judgeLutFile(contents, tw::fromUtf8(path), file, reason)) {
        case tw::LutFileResult::kUnreadable:
            throw Failure("cannot use '" + path + "': " + reason);
        case tw::LutFileResult::kForeignDomain:
            throw Failure("cannot use '" + path + "': its domain is other than 0..1");
        case tw::LutFileResult::kLoaded:
            break;
    }
    return file.text;
}

tw::Lut3D lutFromText(const std::string& text, const std::string& origin) {
    tw::Lut3D lut;
    std::string reason;
    if (!tw::parseEmbeddedText(text, lut, &reason)) {
        throw Failure("cannot use '" + origin + "': " + reason);
    }
    return lut;
}

std::string cubeFromLut(const tw::Lut3D& lut) {
    std::string text = "TITLE \"" + titleOf(lut) + "\"\n";
    if (lut.id != 0) text += "# Tintwell match " + std::to_string(lut.id) + "\n";
    text += "LUT_3D_SIZE " + std::to_string(lut.size) + "\n";
    char line[64];
    for (std::size_t at = 0; at < lut.data.size(); at += 3) {
        std::snprintf(line, sizeof line, "%.9g %.9g %.9g\n", static_cast<double>(lut.data[at]),
                      static_cast<double>(lut.data[at + 1]), static_cast<double>(lut.data[at + 2]));
        text += line;
    }
    return text;
}

std::string describeLut(const tw::Lut3D& lut) {
    const auto [lo, hi] = std::minmax_element(lut.data.begin(), lut.data.end());
    char values[64];
    std::snprintf(values, sizeof values, "values %.6g to %.6g", static_cast<double>(*lo),
                  static_cast<double>(*hi));
    return "\"" + lut.name + "\", match " + std::to_string(lut.id) + ", " +
           std::to_string(lut.size) + " points an axis, " + values;
}

}  // namespace program
