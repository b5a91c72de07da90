// `tintwell-host render --gpu` beside the CPU's render of the same picture.
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

class GpuRenderCommand : public Program {
protected:
    void SetUp() override {
        writeInput("in.png", 61, 37);
        // With a date of its own: pictures without one are dated when they are written.
        program::Picture picture = program::readPicture(file("in.png"), program::Depth::k8);
        picture.metadata.attribute("DateTime", "2026:01:02 03:04:05");
        program::writePicture(file("in.png"), picture);
        writeNegative("negative.cube");
    }

    // Both ways must write the same file.
    void compare(const std::string& options) {
        runWell("render in.png cpu.exr --depth float " + options);
        const Outcome gpu = run("render in.png gpu.exr --gpu " + options);
        EXPECT_EQ(gpu.exitCode, 0) << gpu.err;
        EXPECT_EQ(gpu.err, "") << options;
        EXPECT_EQ(twtest::readFile(file("gpu.exr")), twtest::readFile(file("cpu.exr"))) << options;
        EXPECT_EQ(floats("gpu.exr"), floats("cpu.exr")) << options;
    }
};

TEST_F(GpuRenderCommand, writesTheSameFileAsTheCpu_atIntegerAmounts) {
    for (const char* amount : {"1", "50", "73", "100"})
        compare(std::string("--lut negative.cube --amount ") + amount);
}

TEST_F(GpuRenderCommand, writesTheSameFileAsTheCpu_withoutALook) {
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
    runWrong("render in.png out.png --gpu --host ae", "--gpu needs --host premiere");
    runWrong("render in.png out.png --gpu --depth 8",
             "--gpu renders in float: leave out --depth 8");
    EXPECT_FALSE(exists("out.png"));
}

}  // namespace
}  // namespace program_test
