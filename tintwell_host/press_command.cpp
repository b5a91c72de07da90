#include <cstdio>

#include "tintwell_host/subcommands.h"

namespace program {

void runPress(const PressOptions& options) {
    EffectSession session(options.effect);
    session.press(options.button == "edit" ? 1 : 0);
    if (!options.save.empty()) session.save(options.save);
    const std::string label = session.label(0);
    session.close();
    std::printf("The LUT button says \"%s\".\n", label.c_str());
}

}  // namespace program
