// `tintwell-host render --gpu` beside the CPU's render of the same picture.
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

class GpuRenderCommand : public Program {
protected:
    void SetUp() override {
        writeInput("in.png", 61, 37);
        writeNegative("negative.cube");
    }

    // Both ways must write the same picture.
    void compare(const std::string& options) {
        runWell("render in.png cpu.exr --depth float " + options);
        const Outcome gpu = run("render in.png gpu.exr --gpu " + options);
        EXPECT_EQ(gpu.exitCode, 0) << gpu.err;
        EXPECT_EQ(gpu.err, "") << options;
        EXPECT_EQ(floats("gpu.exr"), floats("cpu.exr")) << options;
    }
};

TEST_F(GpuRenderCommand, writesTheSamePictureAsTheCpu_atIntegerAmounts) {
    for (const char* amount : {"1", "50", "73", "100"})
        compare(std::string("--lut negative.cube --amount ") + amount);
}

TEST_F(GpuRenderCommand, writesTheSamePictureAsTheCpu_withoutALook) {
    compare("");
}

TEST_F(GpuRenderCommand, rendersOnTheGpuIndeed) {
    runWell("--home home render in.png gpu.exr --gpu --lut negative.cube");
    const std::string log =
        twtest::readFile(file("home/Library/Application Support/Tintwell/effect.log"));
    EXPECT_NE(log.find("  GPU: filter ready on device 0 (Metal)\n"), std::string::npos) << log;
    EXPECT_NE(log.find("  GPU Render Metal fmt=32f 61x37 src->dst amount=1.000 lut=2\n"),
              std::string::npos)
        << log;
}

TEST_F(GpuRenderCommand, isOfPremiereProAndFloatOnly) {
    runWrong("render in.png out.png --gpu --host ae", "--gpu needs --host premiere", "", 2);
    runWrong("render in.png out.png --gpu --depth 8", "--gpu renders in float: leave out --depth 8",
             "", 2);
    EXPECT_FALSE(exists("out.png"));
}

}  // namespace
}  // namespace program_test
