#include <regex>

#include "tintwell_host/failure.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

Picture blankPicture(const std::string& size, Depth depth) {
    std::smatch parts;
    if (!std::regex_match(size, parts, std::regex("([1-9][0-9]{0,4})x([1-9][0-9]{0,4})"))) {
        throw Failure("'" + size + "' is no frame size; write it as 1920x1080");
    }
    Picture picture;
    picture.width = std::stoi(parts[1]);
    picture.height = std::stoi(parts[2]);
    picture.depth = depth;
    const auto samples =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height) * 4;
    if (depth == Depth::k8) {
        picture.bytes.resize(samples);
    } else {
        picture.floats.resize(samples);
    }
    return picture;
}

}  // namespace

void runPattern(const PatternOptions& options) {
    const Picture blank =
        blankPicture(options.frame, chosenDepth(options.depth, options.effect.host));
    const std::string text = "TWLUTP " + std::to_string(options.size);
    EffectSession session(options.effect);
    session.scan(text, text);
    writePicture(options.out, session.render(blank));
    session.close();
}

}  // namespace program
