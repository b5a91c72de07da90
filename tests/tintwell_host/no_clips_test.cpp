// Of a program that was built without clips.
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

using NoClips = Program;

TEST_F(NoClips, areRefusedWithTheReason) {
    writeInput("s.0001.png");
    for (const char* files : {"s.%04d.png out.mov", "in.mp4 out.%04d.png", "in.mov out.MXF"}) {
        runWrong(std::string("render ") + files,
                 "this program was built without clips: build with TINTWELL_CLIPS=ON");
    }
}

}  // namespace
}  // namespace program_test
