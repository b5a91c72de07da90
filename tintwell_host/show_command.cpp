#include <cstdio>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/look_commands.h"
#include "tintwell_host/look_files/look_file.h"
#include "tintwell_host/sheets/scene.h"
#include "tintwell_host/sheets/sheet.h"

namespace program {
namespace {

// The computed one in the size of the largest picture on a sheet.
Picture pictureFor(const std::string& file) {
    return file.empty() ? computedScene(736, 414) : readPicture(file, Depth::kFloat);
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
