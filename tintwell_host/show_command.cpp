#include <cstdio>

#include "looks/scene.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/look_commands.h"
#include "tintwell_host/look_files/look_file.h"
#include "tintwell_host/sheets/sheet.h"

namespace program {
namespace {

// The computed one in the size of the largest picture on a sheet.
Picture pictureFor(const std::string& file) {
    if (!file.empty()) return readPicture(file, Depth::kFloat);
    Picture scene;
    scene.width = 736;
    scene.height = 414;
    scene.depth = Depth::kFloat;
    scene.floats = looks::computedScene(scene.width, scene.height);
    return scene;
}

}  // namespace

void runShow(const ShowOptions& options) {
    const looks::Check look = onlyLook(options.look);
    std::string svg;
    if (options.compare.empty()) {
        svg = lookSheet(look, pictureFor(options.picture));
    } else {
        const looks::Check other = onlyLook(options.compare);
        svg = comparisonSheet(look, other, pictureFor(options.picture));
    }
    if (options.out == "-") {
        std::fwrite(svg.data(), 1, svg.size(), stdout);
    } else {
        writeWhole(options.out, svg);
    }
}

}  // namespace program
