// How a render determines its pixel format.
#include "host_api/pixel_format_suite.h"
#include "tests/effect/missing_suites.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/row_name.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;

constexpr char kSuite[] = "PF Pixel Format Suite";

class RenderFormats : public EffectTest {
protected:
    host_sim::Instance& startWithLut(const host_sim::Personality& personality) {
        host_sim::Instance& effect = start(personality);
        EXPECT_EQ(effect.scan(kLut, rotationText()), 0);
        newLogLines();
        return effect;
    }

    // 8-bit BGRA pixels are rendered and logged as such.
    void expectBGRA8(host_sim::Instance& effect) {
        const Frame input = scattered(PrPixelFormat_BGRA_4444_8u, 5, 3);
        Frame output(PrPixelFormat_BGRA_4444_8u, 5, 3);
        const Frame expected = graded(parsed(rotationText()), input, output, 1.0f);
        EXPECT_EQ(effect.render(input, output).error, 0);
        EXPECT_TRUE(samePixels(expected, output));
        EXPECT_EQ(newLogLines(),
                  Lines({"Render fmt=BGRA8u 5x3 rowbytes=52 id=7 amount=1.000 lut=embedded 2"}));
    }
};

class UnknownFormat : public RenderFormats, public ::testing::WithParamInterface<PrPixelFormat> {};

TEST_P(UnknownFormat, isRefusedWithoutATrace) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    const Frame input(GetParam(), 4, 3, {.fill = 0x40});
    Frame output(GetParam(), 4, 3);
    const Frame before = output;
    const std::size_t locks = host->handles().counts().locks;
    for (const double amount : {100.0, 0.0}) {
        effect.setSlider(kAmount, amount);
        EXPECT_EQ(effect.render(input, output).error, 514);
    }
    EXPECT_TRUE(output.sameMemory(before));
    EXPECT_EQ(host->handles().counts().locks, locks);
    EXPECT_EQ(newLogLines(), Lines());
}

INSTANTIATE_TEST_SUITE_P(Formats, UnknownFormat,
                         ::testing::Values(PrPixelFormat_BGRA_4444_16u,
                                           PrPixelFormat_ARGB_4444_8u));

TEST_F(RenderFormats, asksTheSuiteOnceARender_inPremierePro) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    const int before = host->suites().use(kSuite, 1).acquired;
    expectBGRA8(effect);
    EXPECT_EQ(host->suites().use(kSuite, 1).acquired, before + 1);
    EXPECT_EQ(host->suites().use(kSuite, 1).released, before + 1);
}

TEST_F(RenderFormats, releasesTheSuite_whenTheFormatIsUnknown) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    Frame frame(PrPixelFormat_BGRA_4444_16u, 2, 2);
    effect.render(frame, frame);
    EXPECT_EQ(host->suites().use(kSuite, 1).acquired, host->suites().use(kSuite, 1).released);
}

TEST_F(RenderFormats, judgesByTheOutput_whenTheInputIsOfAnotherFormat) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    effect.setNull(kLut);
    Frame input(PrPixelFormat_BGRA_4444_32f, 1, 2), output(PrPixelFormat_BGRA_4444_8u, 1, 2);
    newLogLines();
    EXPECT_EQ(effect.render(input, output).error, 0);
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=BGRA8u 1x2 rowbytes=36 id=0 amount=1.000 lut=none 0"}));
}

class RenderWithoutSuite : public RenderFormats,
                           public ::testing::WithParamInterface<MissingSuite> {};

TEST_P(RenderWithoutSuite, takesEightBits_inPremierePro) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    GetParam().arrange(host->refusals(), kSuite);
    expectBGRA8(effect);
}

INSTANTIATE_TEST_SUITE_P(When, RenderWithoutSuite, ::testing::ValuesIn(kMissingSuites), RowName());

TEST_F(RenderFormats, takesEightBits_whenTheSuiteDoesNotKnowTheFormat) {
    host_sim::Instance& effect = startWithLut(host_sim::premierePro());
    host->refusals().fail(host_sim::Refusal::kPixelFormat, host_sim::kEveryCall,
                          PF_Err_BAD_CALLBACK_PARAM);
    expectBGRA8(effect);
}

TEST_F(RenderFormats, doesNotAsk_inAfterEffects) {
    host_sim::Instance& effect = startWithLut(host_sim::afterEffects());
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 5, 3);
    Frame output(PrPixelFormat_ARGB_4444_8u, 5, 3);
    EXPECT_EQ(effect.render(input, output).error, 0);
    EXPECT_EQ(host->suites().use(kSuite, 1).acquired, 0);
    EXPECT_EQ(host->suites().use(kSuite, 1).refused, 0);
}

TEST_F(RenderFormats, treatsAnUnknownHostAsAfterEffects) {
    host_sim::Personality other = host_sim::afterEffects();
    other.applId = 0x41424344;
    host_sim::Instance& effect = startWithLut(other);
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 5, 3);
    Frame output(PrPixelFormat_ARGB_4444_8u, 5, 3);
    const Frame expected = graded(parsed(rotationText()), input, output, 1.0f);
    EXPECT_EQ(effect.render(input, output).error, 0);
    EXPECT_TRUE(samePixels(expected, output));
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=ARGB8 5x3 rowbytes=52 id=7 amount=1.000 lut=embedded 2"}));
}

}  // namespace
}  // namespace twtest
