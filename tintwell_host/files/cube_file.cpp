#include "tintwell_host/files/cube_file.h"

#include <algorithm>
#include <cstdio>
#include <fstream>

#include "looks/forms.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"

namespace program {

std::string textFromCube(const std::string& path) {
    // Read here, and once: the button's rules do not tell a file that cannot be opened from one
    // that is empty, they spell a path in their own way, and a pipe gives its contents only once.
    const std::string contents = readText(path);
    std::string text;
    std::string reason;
    if (!looks::textFromCube(contents, tw::fromUtf8(path), text, reason))
        throw Failure("cannot use '" + path + "': " + reason);
    return text;
}

tw::Lut3D lutFromText(const std::string& text, const std::string& origin) {
    tw::Lut3D lut;
    std::string reason;
    if (!tw::parseEmbeddedText(text, lut, &reason)) {
        throw Failure("cannot use '" + origin + "': " + reason);
    }
    return lut;
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
