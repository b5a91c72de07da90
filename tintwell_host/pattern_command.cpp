#include "tintwell_host/files/frame_size.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

Picture blankPicture(const std::string& size, Depth depth) {
    const FrameSize frame = parseFrameSize(size);
    Picture picture;
    picture.width = frame.width;
    picture.height = frame.height;
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
