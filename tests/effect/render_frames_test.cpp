// Pictures of every format and shape, against the engine's own results, bit for bit.
#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/row_name.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;
using host_sim::FrameLayout;

class RenderFrames : public EffectTest, public ::testing::WithParamInterface<HostFormat> {
protected:
    void SetUp() override {
        effect_ = &start(GetParam().personality());
        ASSERT_EQ(effect().scan(kLut, text_), 0);
    }

    host_sim::Instance& effect() { return *effect_; }
    static PrPixelFormat pixels() { return GetParam().pixels; }
    const tw::Lut3D& lut() const { return lut_; }

    void expectGraded(const Frame& input, Frame output, float amount = 1.0f) {
        const Frame expected = graded(lut_, input, output, amount);
        EXPECT_EQ(effect().render(input, output).error, 0);
        EXPECT_TRUE(samePixels(expected, output));
        EXPECT_EQ(output.damage(), std::nullopt);
    }

    void expectCopied(const Frame& input, Frame output) {
        Frame expected = output;
        for (int y = 0; y < std::min(input.height(), output.height()); ++y) {
            for (int x = 0; x < std::min(input.width(), output.width()); ++x) {
                if (isFloat(input)) {
                    expected.setPixelF(x, y, input.pixelF(x, y));
                } else {
                    expected.setPixel8(x, y, input.pixel8(x, y));
                }
            }
        }
        EXPECT_EQ(effect().render(input, output).error, 0);
        EXPECT_TRUE(samePixels(expected, output));
        EXPECT_EQ(output.damage(), std::nullopt);
    }

private:
    const std::string text_ = scatteredText(5, 11);
    const tw::Lut3D lut_ = parsed(text_);
    host_sim::Instance* effect_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Formats, RenderFrames, ::testing::Values(kARGB8, kBGRA8, kBGRA32f),
                         RowName());

TEST_P(RenderFrames, gradesEverySize) {
    for (const auto& [width, height] :
         {std::pair{1, 1}, {1, 7}, {7, 1}, {3, 5}, {17, 31}, {16, 32}, {19, 33}, {5, 100}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        expectGraded(scattered(pixels(), width, height), Frame(pixels(), width, height));
    }
}

TEST_P(RenderFrames, doesNothing_whenThePictureIsEmpty) {
    for (const auto& [width, height] : {std::pair{0, 0}, {0, 4}, {4, 0}}) {
        Frame input(pixels(), width, height), output(pixels(), width, height);
        EXPECT_EQ(effect().render(input, output).error, 0);
        effect().setSlider(kAmount, 0.0);
        EXPECT_EQ(effect().render(input, output).error, 0);
        EXPECT_EQ(output.damage(), std::nullopt);
    }
}

TEST_P(RenderFrames, gradesByAmount) {
    const Frame input = scattered(pixels(), 13, 40);
    for (const double percent : {100.0, 50.0, 50.1, 0.1, 150.0}) {
        SCOPED_TRACE(percent);
        effect().setSlider(kAmount, percent);
        expectGraded(input, Frame(pixels(), 13, 40), static_cast<float>(percent / 100.0));
    }
    effect().setSlider(kAmount, 0.0);
    expectCopied(input, Frame(pixels(), 13, 40));
}

// Row bytes of input and output: equal, different, negative, and pixels that are not 16-byte
// aligned.
std::vector<std::pair<FrameLayout, FrameLayout>> layouts() {
    const FrameLayout packed{.padding = 0};
    const FrameLayout padded{.padding = 64, .misalignment = 4};
    const FrameLayout bottomUp{.padding = 16, .bottomUp = true};
    return {{packed, packed},   {packed, padded},   {padded, packed},
            {bottomUp, padded}, {padded, bottomUp}, {bottomUp, bottomUp}};
}

TEST_P(RenderFrames, takesAnyLayout) {
    for (const auto& [from, to] : layouts()) {
        SCOPED_TRACE("padding " + std::to_string(from.padding) + " to " +
                     std::to_string(to.padding));
        const Frame input = scattered(pixels(), 11, 37, 3, from);
        const Frame output(pixels(), 11, 37, to);
        effect().setSlider(kAmount, 100.0);
        expectGraded(input, output);
        effect().setSlider(kAmount, 0.0);
        expectCopied(input, output);
    }
}

TEST_P(RenderFrames, gradesInPlace) {
    Frame frame = scattered(pixels(), 21, 67);
    const Frame expected = graded(lut(), frame, frame, 1.0f);
    EXPECT_EQ(effect().render(frame, frame).error, 0);
    EXPECT_TRUE(samePixels(expected, frame));
}

TEST_P(RenderFrames, leavesThePictureAlone_whenCopiedInPlace) {
    effect().setSlider(kAmount, 0.0);
    Frame frame = scattered(pixels(), 21, 67);
    const Frame before = frame;
    EXPECT_EQ(effect().render(frame, frame).error, 0);
    EXPECT_TRUE(frame.sameMemory(before));
}

TEST_P(RenderFrames, writesTheCommonAreaOnly_whenSizesDiffer) {
    for (const auto& [width, height] : {std::pair{5, 40}, {12, 34}, {12, 40}, {5, 34}}) {
        SCOPED_TRACE(std::to_string(width) + " x " + std::to_string(height));
        const Frame input = scattered(pixels(), 9, 36), output(pixels(), width, height);
        effect().setSlider(kAmount, 100.0);
        expectGraded(input, output);
        effect().setSlider(kAmount, 0.0);
        expectCopied(input, output);
    }
}

TEST_P(RenderFrames, writesOneFieldOnly_whenTheHostRendersFields) {
    const Frame whole = scattered(pixels(), 9, 41);
    for (const PF_Field field : {PF_Field_UPPER, PF_Field_LOWER}) {
        Frame input = whole, output(pixels(), 9, 41);
        input.selectField(field);
        output.selectField(field);
        Frame expected = graded(lut(), input, output, 1.0f);
        EXPECT_EQ(effect().render(input, output, {.field = field}).error, 0);
        expected.selectAll();
        output.selectAll();
        EXPECT_TRUE(samePixels(expected, output)) << "field " << field;
    }
}

TEST_P(RenderFrames, writesItsRectangleOnly_whenWorldsAreCutOut) {
    const host_sim::Region region{3, 2, 6, 33};
    Frame input = scattered(pixels(), 15, 40), output(pixels(), 15, 40);
    input.select(region);
    output.select(region);
    expectGraded(input, output);
    effect().setSlider(kAmount, 0.0);
    expectCopied(input, output);
}

TEST_P(RenderFrames, fillsAnyFrameWithThePattern) {
    ASSERT_EQ(effect().scan(kLut, "TWLUTP 5"), 0);
    for (const double amount : {100.0, 0.0}) {
        effect().setSlider(kAmount, amount);
        for (const FrameLayout& layout : {FrameLayout{}, FrameLayout{.bottomUp = true}}) {
            // The input's size does not matter.
            const Frame input = scattered(pixels(), 4, 3);
            Frame output(pixels(), 61, 43, layout);
            const Frame expected = patterned(5, output);
            EXPECT_EQ(effect().render(input, output).error, 0);
            EXPECT_TRUE(samePixels(expected, output)) << amount;
        }
    }
}

}  // namespace
}  // namespace twtest
