// Whole sessions, from registration over rendering to a saved project and back.
#include <string>
#include <vector>

#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/row_name.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;

class Sessions : public EffectTest {
protected:
    std::string project() const { return folder_ / "project.json"; }

    // Closes the host and starts another one, which shares nothing with it.
    host_sim::Host& reopen(const host_sim::Personality& personality) {
        closeHost();
        openHost(personality).start();
        return *host;
    }

private:
    const twtest::TempFolder folder_;
};

class SessionFormats : public Sessions, public ::testing::WithParamInterface<HostFormat> {
protected:
    static constexpr int kFrames = 30;

    static double amountAt(int frame) { return frame * 100.0 / (kFrames - 1); }

    static Frame inputAt(int frame) {
        return scattered(GetParam().pixels, 31, 37, static_cast<std::uint64_t>(frame));
    }

    // A clip with Amount rising from 0 to 100.
    static std::vector<Frame> renderClip(host_sim::Instance& effect) {
        std::vector<Frame> clip;
        for (int frame = 0; frame < kFrames; ++frame) {
            effect.setSlider(kAmount, amountAt(frame));
            Frame output(GetParam().pixels, 31, 37);
            EXPECT_EQ(effect.render(inputAt(frame), output, {.time = frame}).error, 0);
            clip.push_back(output);
        }
        return clip;
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, SessionFormats, ::testing::Values(kARGB8, kBGRA8, kBGRA32f),
                         RowName());

TEST_P(SessionFormats, renderTheSameClip_afterTheProjectWasReopened) {
    host_sim::Instance& effect = start(GetParam().personality());
    const std::string text = scatteredText(9, 21, 77, "Golden hour");
    ASSERT_EQ(effect.scan(kLut, text), 0);
    const std::vector<Frame> before = renderClip(effect);
    EXPECT_TRUE(samePixels(inputAt(0), before[0]));
    for (int frame = 1; frame < kFrames; ++frame) {
        const auto amount = static_cast<float>(amountAt(frame) / 100.0);
        const Frame expected = graded(parsed(text), inputAt(frame), before[0], amount);
        EXPECT_TRUE(samePixels(expected, before[static_cast<std::size_t>(frame)])) << frame;
    }
    host->save(effect, project());

    host_sim::Instance& loaded = reopen(GetParam().personality()).load(project());
    EXPECT_EQ(loaded.slider(kAmount), 100.0);
    EXPECT_EQ(loaded.print(kLut).value, text);
    const std::vector<Frame> after = renderClip(loaded);
    for (std::size_t frame = 0; frame < after.size(); ++frame)
        EXPECT_TRUE(samePixels(before[frame], after[frame])) << frame;
}

TEST_P(SessionFormats, leaveALineForEachAmount_inTheLog) {
    host_sim::Instance& effect = start(GetParam().personality());
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    newLogLines();
    renderClip(effect);
    const Lines logged = newLogLines();
    ASSERT_EQ(logged.size(), static_cast<std::size_t>(kFrames));
    const std::string start = std::string("Render fmt=") + GetParam().name +
                              " 31x37 rowbytes=" + std::to_string(inputAt(0).rowBytes()) +
                              " id=7 amount=";
    EXPECT_EQ(logged[0], start + "0.000 lut=embedded 2");
    EXPECT_EQ(logged[1], start + "0.034 lut=embedded 2");
    EXPECT_EQ(logged[29], start + "1.000 lut=embedded 2");
}

TEST_F(Sessions, carryALutFromOneHostToTheOther) {
    host_sim::Instance& effect = start(host_sim::afterEffects());
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    effect.setSlider(kAmount, 50.0);
    host->save(effect, project());
    host_sim::Instance& loaded = reopen(host_sim::premierePro()).load(project());
    Frame frame(PrPixelFormat_BGRA_4444_8u, 1, 1);
    frame.setPixel8(0, 0, {10, 20, 30, 40});
    EXPECT_EQ(loaded.render(frame, frame).error, 0);
    EXPECT_EQ(frame.pixel8(0, 0), (host_sim::Rgba8{15, 25, 20, 40}));
}

TEST_F(Sessions, keepEightBitText_whenAProjectHoldsSuch) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, bytesOf(rotationText()));
    host->save(effect, project());
    host_sim::Instance& loaded = reopen(host_sim::afterEffects()).load(project());
    EXPECT_EQ(loaded.flatten(kLut).value, bytesOf(rotationText()));
}

TEST_F(Sessions, openWithoutALut_whenAProjectHoldsForeignData) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, bytesOf("what another effect left"));
    host->save(effect, project());
    reopen(host_sim::afterEffects());
    newLogLines();
    host_sim::Instance& loaded = host->load(project());
    EXPECT_EQ(loaded.flatten(kLut).value, emptyLut());
    const Lines logged = newLogLines();
    EXPECT_EQ(std::count(logged.begin(), logged.end(),
                         "Arb UNFLATTEN: 24 bytes are not TWLUT text, using none"),
              1);
}

TEST_F(Sessions, openWithoutAValue_whenAProjectHoldsNone) {
    host_sim::Instance& effect = start();
    effect.setNull(kLut);
    host->save(effect, project());
    host_sim::Instance& loaded = reopen(host_sim::afterEffects()).load(project());
    EXPECT_EQ(loaded.arbitrary(kLut), nullptr);
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 5, 4);
    Frame output(PrPixelFormat_ARGB_4444_8u, 5, 4);
    EXPECT_EQ(loaded.render(input, output).error, 0);
    EXPECT_TRUE(samePixels(input, output));
}

TEST_F(Sessions, keepInstancesApart) {
    host_sim::Instance& first = start();
    ASSERT_EQ(first.scan(kLut, rotationText()), 0);
    host_sim::Instance& second = host->duplicate(first);
    host_sim::Instance& third = host->apply();
    ASSERT_EQ(first.scan(kLut, quarterText()), 0);
    EXPECT_EQ(second.print(kLut).value, rotationText());
    EXPECT_EQ(third.print(kLut).value, "TWLUT0");
    host->remove(first);
    Frame frame(PrPixelFormat_ARGB_4444_8u, 1, 1);
    frame.setPixel8(0, 0, {10, 20, 30, 40});
    EXPECT_EQ(second.render(frame, frame).error, 0);
    EXPECT_EQ(frame.pixel8(0, 0), (host_sim::Rgba8{20, 30, 10, 40}));
}

TEST_F(Sessions, needNoGlobalSetup_whenPremiereProRemembersIt) {
    openHost(host_sim::premierePro()).registerEffect();
    ASSERT_EQ(host->paramsSetup().error, 0);
    host_sim::Instance& effect = host->apply();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    Frame frame(PrPixelFormat_BGRA_4444_8u, 1, 1);
    frame.setPixel8(0, 0, {10, 20, 30, 40});
    EXPECT_EQ(effect.render(frame, frame).error, 0);
    EXPECT_EQ(frame.pixel8(0, 0), (host_sim::Rgba8{20, 30, 10, 40}));
}

TEST_F(Sessions, renderFieldsAndFramesAlike) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    ASSERT_EQ(effect.scan(kLut, scatteredText(4, 8)), 0);
    const Frame whole = scattered(PrPixelFormat_BGRA_4444_32f, 12, 47);
    Frame inOne(PrPixelFormat_BGRA_4444_32f, 12, 47), inFields = inOne;
    EXPECT_EQ(effect.render(whole, inOne).error, 0);
    for (const PF_Field field : {PF_Field_UPPER, PF_Field_LOWER}) {
        Frame input = whole;
        input.selectField(field);
        inFields.selectField(field);
        EXPECT_EQ(effect.render(input, inFields, {.field = field}).error, 0);
    }
    inFields.selectAll();
    EXPECT_TRUE(samePixels(inOne, inFields));
}

}  // namespace
}  // namespace twtest
