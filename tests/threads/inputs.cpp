#include "tests/threads/inputs.h"

#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "tests/support/cube_texts.h"
#include "tests/support/frames.h"
#include "tests/support/texts.h"

namespace stress {
namespace {

using host_sim::Frame;
using twtest::Bytes;
using twtest::bytesOf;
using twtest::cube;
using twtest::scatteredText;
using twtest::widened;

std::string labelOf(const tw::Lut3D& lut) {
    if (lut.probe != 0) return "Calibrating";
    if (lut.size == 0) return "Choose a LUT";
    return lut.name.empty() ? "From Tintwell (Apply again to name it)" : lut.name + ".cube";
}

}  // namespace

Frame blank(const Frame& input) {
    return {input.format(), input.width(), input.height()};
}

Look renamed(Look look, const std::string& name) {
    const std::size_t start = look.text.find(' ', look.text.find(' ') + 1) + 1;
    look.text.replace(start, look.text.find(' ', start) - start, name);
    look.bytes = widened(look.text);
    look.lut.name = name;
    look.label = labelOf(look.lut);
    return look;
}

Inputs::Inputs() {
    for (const auto format : {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_BGRA_4444_32f}) {
        for (const int rows : {9, 40}) {
            if (format == PrPixelFormat_BGRA_4444_32f) floatScenes_.push_back(scenes_.size());
            scenes_.push_back(twtest::scattered(format, 33 - rows / 2, rows));
        }
    }
    for (int i = 0; i < 10; ++i) {
        const std::string name = i == 0 ? "" : "Look " + std::to_string(i);
        const auto seed = static_cast<std::uint64_t>(i);
        const std::string text = scatteredText(2 + i, seed, i % 3, name);
        looks_.push_back(lookOf(i == 5 ? bytesOf(text) : widened(text)));
    }
    for (const char* text : {"TWLUT0", "TWLUTP 5", "TWLUT3 0 - 2 0 1 AAAA"})
        looks_.push_back(lookOf(widened(text)));
    looks_.push_back(lookOf({}));

    addFile("Contrast.cube", cube(2));
    addFile("Matched.v2.cube", cube(2, "# Tintwell match 77\n"));
    addFile("Titled.cube", cube(2, "TITLE \"Any\"\n# Tintwell match 8\n"));
    addFile("Torn.cube", "LUT_3D_SIZE 2\n0 0 0\n");
    addFile("Wide.cube", cube(2, "DOMAIN_MAX 2 2 2\n"));
}

Look Inputs::lookOf(const Bytes& bytes) const {
    Look look;
    look.bytes = bytes;
    look.text = tw::embeddedText(bytes.data(), bytes.size());
    if (!bytes.empty() && !tw::parseEmbeddedText(look.text, look.lut, &look.failure)) look.lut = {};
    look.label = labelOf(look.lut);
    for (const Frame& input : scenes_) {
        look.pictures.push_back({pictureOf(look.lut, input, kPercents[0]),
                                 pictureOf(look.lut, input, kPercents[1]),
                                 pictureOf(look.lut, input, kPercents[2])});
    }
    return look;
}

Frame Inputs::pictureOf(const tw::Lut3D& lut, const Frame& input, int percent) const {
    if (lut.probe != 0) return twtest::patterned(lut.probe, blank(input));
    if (lut.size == 0 || percent == 0) return input;
    return twtest::graded(lut, input, blank(input), static_cast<float>(percent / 100.0));
}

void Inputs::addFile(const std::string& name, const std::string& contents) {
    CubeFile file;
    file.path = folder_ / name;
    twtest::writeFile(file.path, contents);
    tw::LutFile loaded;
    file.result = tw_effect::loadLutFile(tw::fromUtf8(file.path), loaded, file.reason);
    if (file.result == tw::LutFileResult::kLoaded) file.look = lookOf(widened(loaded.text));
    files_.push_back(std::move(file));
}

}  // namespace stress
