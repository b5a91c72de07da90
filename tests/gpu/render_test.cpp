// Frames through the GPU filter: what is drawn, read, logged and refused.
#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <string>

#include "tests/gpu/differences.h"
#include "tests/gpu/filter_fixture.h"
#include "tests/support/locales.h"

namespace {

using namespace twtest;

constexpr auto k32f = PrPixelFormat_GPU_BGRA_4444_32f;
constexpr auto k16f = PrPixelFormat_GPU_BGRA_4444_16f;

// Bit for bit.
testing::AssertionResult samePicture(const Frame& expected, const Frame& actual) {
    for (int y = 0; y < expected.height(); ++y) {
        for (int x = 0; x < expected.width(); ++x) {
            for (std::size_t c = 0; c < 4; ++c) {
                const float a = expected.pixelF(x, y)[c];
                const float b = actual.pixelF(x, y)[c];
                if (!sameValue(a, b))
                    return testing::AssertionFailure()
                           << "pixel (" << x << ", " << y << ") channel " << c << ": expected " << a
                           << ", got " << b;
            }
        }
    }
    return testing::AssertionSuccess();
}

class GpuRender : public FilterTest {
protected:
    // From one frame to another, as the host shows it.
    Frame rendered(const Frame& picture, PrPixelFormat format = k32f) {
        GpuInstance instance = make();
        GpuFrame source = frame(picture, format);
        GpuFrame destination = emptyFrame(picture, format);
        EXPECT_EQ(instance.render(source, destination), 0);
        gpu_->wait();
        EXPECT_EQ(source.damage(), std::nullopt);
        EXPECT_EQ(destination.damage(), std::nullopt);
        return destination.download();
    }

    Frame renderedInPlace(const Frame& picture) {
        GpuInstance instance = make();
        GpuFrame both = frame(picture);
        EXPECT_EQ(instance.render(both, both), 0);
        gpu_->wait();
        EXPECT_EQ(both.damage(), std::nullopt);
        return both.download();
    }

    // The answer to one render in place while the device has these faults.
    prSuiteError renderWith(const Faults& faults) {
        GpuInstance instance = make();
        GpuFrame picture = frame(noisePicture(4, 4));
        software_metal::setFaults(faults);
        const prSuiteError error = instance.render(picture, picture);
        software_metal::setFaults({});
        gpu_->wait();
        return error;
    }

    // The lines after "filter ready" and the setup line.
    Lines laterLines() const {
        Lines lines = gpuLines();
        lines.erase(lines.begin(), lines.begin() + std::min<std::ptrdiff_t>(2, std::ssize(lines)));
        return lines;
    }
};

TEST_F(GpuRender, equalsTheCpuPicture_atEveryIntegerAmount) {
    setLook(lutText(17, 1));
    const Frame picture = noisePicture(23, 17);
    for (int amount = 0; amount <= 100; ++amount) {
        effect_->setSlider(kAmount, amount);
        ASSERT_TRUE(samePicture(cpuPicture(picture), rendered(picture))) << amount;
    }
}

TEST_F(GpuRender, equalsTheCpuPicture_inPlace) {
    setLook(lutText(33, 2));
    const Frame picture = noisePicture(37, 20);
    EXPECT_TRUE(samePicture(cpuPicture(picture), renderedInPlace(picture)));
}

TEST_F(GpuRender, equalsTheCpuPicture_whereverTheFramesBoundsBegin) {
    setLook(lutText(9, 2));
    const Frame picture = noisePicture(21, 18);
    GpuInstance instance = make();
    GpuFrame source = frame(picture);
    GpuFrame destination(gpu_->device(), k32f, 21, 18, {.padding = 9, .left = 4, .top = 7});
    EXPECT_EQ(instance.render(source, destination), 0);
    gpu_->wait();
    EXPECT_TRUE(samePicture(cpuPicture(picture), destination.download()));
    EXPECT_EQ(destination.damage(), std::nullopt);
}

TEST_F(GpuRender, equalsTheCpuPicture_inHalfFloats) {
    setLook(lutText(9, 3));
    effect_->setSlider(kAmount, 63.0);
    const auto halves = [this](const Frame& floats) { return frame(floats, k16f).download(); };
    const Frame picture = halves(noisePicture(19, 21));
    EXPECT_TRUE(samePicture(halves(cpuPicture(picture)), rendered(picture, k16f)));
}

TEST_F(GpuRender, drawsThePatternOfTheCpu_atAnyAmount) {
    setLook("TWLUTP 5");
    const Frame picture = noisePicture(40, 24);
    for (const double amount : {0.0, 37.0, 100.0}) {
        effect_->setSlider(kAmount, amount);
        EXPECT_TRUE(samePicture(cpuPicture(picture), rendered(picture)));
        EXPECT_TRUE(samePicture(cpuPicture(picture), renderedInPlace(picture)));
    }
}

TEST_F(GpuRender, copies_withoutALook_orAtAmountZero) {
    const Frame picture = noisePicture(11, 5);
    EXPECT_TRUE(samePicture(picture, rendered(picture)));
    setLook(lutText(3, 4));
    effect_->setSlider(kAmount, 0.0);
    EXPECT_TRUE(samePicture(picture, rendered(picture)));
    EXPECT_EQ(counts().dispatches, 2);
    EXPECT_EQ(gpu_->memory().disposed(), 2);
}

TEST_F(GpuRender, copies_atAnAmountThatIsNegativeOrNoNumber) {
    const Frame picture = noisePicture(11, 5);
    setLook(lutText(3, 4));
    for (const double amount : {-25.0, std::numeric_limits<double>::quiet_NaN()}) {
        effect_->setSlider(kAmount, amount);
        EXPECT_TRUE(samePicture(picture, rendered(picture))) << amount;
        EXPECT_TRUE(samePicture(picture, renderedInPlace(picture))) << amount;
    }
    EXPECT_EQ(counts().dispatches, 2);
}

TEST_F(GpuRender, touchesNoGpu_whenTheFrameIsRightAsItIs) {
    const Frame picture = noisePicture(11, 5);
    EXPECT_TRUE(samePicture(picture, renderedInPlace(picture)));
    setLook(lutText(3, 4));
    effect_->setSlider(kAmount, 0.0);
    EXPECT_TRUE(samePicture(picture, renderedInPlace(picture)));
    EXPECT_EQ(counts().dispatches, 0);
}

TEST_F(GpuRender, takesEveryOtherFormatForHalfFloats) {
    setLook(lutText(3, 5));
    const Frame picture = noisePicture(6, 6);
    EXPECT_TRUE(
        samePicture(rendered(picture, k16f), rendered(picture, PrPixelFormat_BGRA_4444_8u)));
    EXPECT_TRUE(gpuLines()[1].starts_with("GPU Render Metal fmt=16f 6x6"));
}

TEST_F(GpuRender, asksTheDestinationForTheFormat) {
    const Frame picture = noisePicture(6, 6);
    GpuInstance instance = make();
    GpuFrame source = frame(picture, k32f);
    GpuFrame destination = emptyFrame(picture, k16f);
    EXPECT_EQ(instance.render(source, destination), 0);
    gpu_->wait();
    EXPECT_TRUE(gpuLines()[1].starts_with("GPU Render Metal fmt=16f 6x6"));
}

TEST_F(GpuRender, takesAFrameWithoutAKnownFormatForHalfFloats) {
    setLook(lutText(3, 5));
    const Frame picture = noisePicture(6, 6);
    const Frame half = rendered(picture, k16f);
    gpu_->refuseFormats(true);
    EXPECT_TRUE(samePicture(half, rendered(picture, k16f)));
}

TEST_F(GpuRender, readsTheAmount_asIntegerFloatAndDouble) {
    setLook(lutText(5, 6));
    effect_->setSlider(kAmount, 50.0);
    const Frame picture = noisePicture(6, 6);
    const Frame expected = cpuPicture(picture);
    for (const csSDK_uint32 type : {3U, 5U, 6U}) {
        GpuValues changed = values();
        changed[0].type = type;
        GpuInstance instance(*gpu_, changed);
        GpuFrame both = frame(picture);
        EXPECT_EQ(instance.render(both, both), 0);
        gpu_->wait();
        EXPECT_TRUE(samePicture(expected, both.download())) << type;
    }
}

TEST_F(GpuRender, takesAnAmountOfAnotherTypeForZero) {
    setLook(lutText(5, 6));
    for (const csSDK_uint32 type : {0U, 7U}) {
        GpuValues changed = values();
        changed[0].type = type;
        GpuInstance instance(*gpu_, changed);
        GpuFrame both = frame(noisePicture(6, 6));
        EXPECT_EQ(instance.render(both, both), 0);
    }
    gpu_->wait();
    EXPECT_EQ(counts().dispatches, 0);
}

TEST_F(GpuRender, logsTheSetup_whenItChanges) {
    const Frame picture = noisePicture(8, 6);
    rendered(picture);
    rendered(picture);
    renderedInPlace(picture);
    setLook(lutText(3, 7));
    effect_->setSlider(kAmount, 12.5);
    rendered(picture, k16f);
    setLook("TWLUTP 4");
    rendered(picture);
    rendered(picture);
    EXPECT_EQ(gpuLines(),
              (Lines{"GPU: filter ready on device 0 (Metal)",
                     "GPU Render Metal fmt=32f 8x6 src->dst amount=1.000 lut=0",
                     "GPU Render Metal fmt=32f 8x6 in-place amount=1.000 lut=0",
                     "GPU Render Metal fmt=16f 8x6 src->dst amount=0.125 lut=3",
                     "GPU Render Metal fmt=32f 8x6 src->dst amount=0.125 lut=4 pattern"}));
}

TEST_F(GpuRender, logsAFullStop_whenTheHostsLocaleHasAComma) {
    const twtest::CommaLocale comma;
    if (!comma.usable()) GTEST_SKIP() << "no locale with a decimal comma";
    effect_->setSlider(kAmount, 12.5);
    rendered(noisePicture(8, 6));
    EXPECT_EQ(gpuLines()[1], "GPU Render Metal fmt=32f 8x6 src->dst amount=0.125 lut=0");
}

TEST_F(GpuRender, failsWithoutALine_withoutFrames) {
    GpuInstance instance = make();
    GpuFrame picture = frame(noisePicture(4, 4));
    PPixHand none = nullptr;
    PPixHand out = picture.handle();
    EXPECT_EQ(instance.render(&out, 0, &out), kFail);
    EXPECT_EQ(instance.render(&out, 1, nullptr), kFail);
    EXPECT_EQ(instance.render(&out, 1, &none), kFail);
    EXPECT_EQ(gpuLines(), kReadyLine);
}

TEST_F(GpuRender, failsWithoutALine_whenTheHostDoesNotGiveAFrame) {
    setLook(lutText(3, 8));
    GpuInstance instance = make();
    GpuFrame source = frame(noisePicture(4, 4));
    GpuFrame destination = emptyFrame(noisePicture(4, 4));
    // After the Amount: memory and row bytes of both, then the format, which may be missing, and
    // the bounds.
    for (const int nth : {2, 3, 4, 5, 7}) {
        host_.refusals().fail(host_sim::Refusal::kGpuCall, nth);
        EXPECT_EQ(instance.render(source, destination), kFail) << nth;
        host_.refusals().clear();
    }
    EXPECT_EQ(counts().commandBuffers, 0);
    EXPECT_EQ(gpuLines(), kReadyLine);
}

TEST_F(GpuRender, fails_whenTheHostThrows) {
    GpuInstance instance = make();
    gpu_->setParamHook([](csSDK_int32, PrTime, PrParam*) -> prSuiteError { throw 1; });
    GpuFrame picture = frame(noisePicture(4, 4));
    EXPECT_EQ(instance.render(picture, picture), kFail);
    gpu_->setParamHook({});
}

TEST_F(GpuRender, saysSoAndFails_whenTheLutCannotBeUploaded_andTriesAgain) {
    setLook(lutText(3, 8));
    EXPECT_EQ(renderWith(faultOf(&Faults::noBuffer)), kFail);
    EXPECT_EQ(laterLines(), Lines{"GPU: Metal LUT upload failed"});
    EXPECT_EQ(renderWith({}), 0);
}

TEST_F(GpuRender, saysSoAndFails_withoutACommandBuffer) {
    setLook(lutText(3, 8));
    EXPECT_EQ(renderWith(faultOf(&Faults::noCommandBuffer)), kFail);
    EXPECT_EQ(renderWith(faultOf(&Faults::noEncoder)), kFail);
    EXPECT_EQ(laterLines(), Lines(2, "GPU: Metal launch failed: no command buffer"));
}

TEST_F(GpuRender, succeeds_whenTheDeviceFailsLater_andSaysSoFiveTimes) {
    setLook(lutText(3, 8));
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(renderWith(faultOf(&Faults::failExecution, "page fault")), 0);
    EXPECT_EQ(laterLines(), Lines(5, "GPU: Metal launch failed: page fault"));
}

class ReadLut : public FilterTest {
protected:
    // Makes an instance with this LUT value and renders a frame with it.
    void use(const GpuValue& lut) {
        GpuValues changed = values();
        changed[1] = lut;
        GpuInstance instance(*gpu_, changed);
        GpuFrame picture = frame(noisePicture(4, 4));
        EXPECT_EQ(instance.render(picture, picture), 0);
    }
    static std::vector<std::uint8_t> bytes(const std::string& text) {
        return {text.begin(), text.end()};
    }
    static Lines typeLines(const Lines& all) {
        Lines lines = all;
        std::erase_if(lines, [](const std::string& line) {
            return !line.starts_with("GPU: LUT param") && !line.starts_with("GPU: embedded");
        });
        return lines;
    }
};

TEST_F(ReadLut, saysSoThreeTimesAProcess_whenTheValueIsNoBlock) {
    for (const csSDK_uint32 type : {3U, 6U, 7U, 3U, 9U})
        use({.type = type});
    EXPECT_EQ(typeLines(gpuLines()), (Lines{"GPU: LUT param type 3 (expected a memory block)",
                                            "GPU: LUT param type 6 (expected a memory block)",
                                            "GPU: LUT param type 7 (expected a memory block)"}));
}

TEST_F(ReadLut, saysSo_whenTheBlockIsNull) {
    use({.type = kPrParamType_PrMemoryPtr, .nullBlock = true});
    EXPECT_EQ(typeLines(gpuLines()), Lines{"GPU: LUT param type 10 (expected a memory block)"});
    EXPECT_EQ(gpu_->memory().disposed(), 0);
}

TEST_F(ReadLut, saysNothing_whenThereIsNoValue) {
    use({});
    EXPECT_EQ(typeLines(gpuLines()), Lines());
}

TEST_F(ReadLut, saysWhy_whenTheTextIsRejected_andGivesTheBlockBack) {
    use({.type = kPrParamType_PrMemoryPtr, .bytes = bytes("this is no look")});
    EXPECT_EQ(typeLines(gpuLines()),
              Lines{"GPU: embedded LUT: parameter does not hold TWLUT text"});
    EXPECT_EQ(gpu_->memory().disposed(), 1);
    EXPECT_EQ(counts().dispatches, 0);
}

class Fallback : public FilterTest {
protected:
    host_sim::GpuRender renderedBy(const Frame& picture, Frame& out) {
        return host_sim::renderOnGpu(*gpu_, *effect_, picture, out);
    }
};

TEST_F(Fallback, isNotNeeded_onAGoodDevice) {
    setLook(lutText(3, 9));
    const Frame picture = noisePicture(9, 9);
    Frame out = noisePicture(9, 9, 2);
    EXPECT_TRUE(renderedBy(picture, out).onGpu);
    EXPECT_TRUE(samePicture(cpuPicture(picture), out));
}

TEST_F(Fallback, isTheCpu_whenNoInstanceCanBeMade) {
    open({{.framework = 1}});
    setLook(lutText(3, 9));
    const Frame picture = noisePicture(9, 9);
    Frame out = noisePicture(9, 9, 2);
    const host_sim::GpuRender how = renderedBy(picture, out);
    EXPECT_FALSE(how.onGpu);
    EXPECT_EQ(how.error, 0);
    EXPECT_TRUE(samePicture(cpuPicture(picture), out));
}

TEST_F(Fallback, isTheCpu_whenARenderFails) {
    setLook(lutText(3, 9));
    const Frame picture = noisePicture(9, 9);
    Frame out = noisePicture(9, 9, 2);
    software_metal::setFaults(faultOf(&Faults::noEncoder));
    EXPECT_FALSE(renderedBy(picture, out).onGpu);
    EXPECT_TRUE(samePicture(cpuPicture(picture), out));
}

}  // namespace
