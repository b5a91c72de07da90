// The log lines of renders: one for each change, and the reason for LUTs that cannot be read.
#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/locales.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;
using host_sim::FrameLayout;

class RenderLog : public EffectTest {
protected:
    // The lines that a render adds.
    Lines logged(host_sim::Instance& effect, PrPixelFormat format, int width, int height,
                 const FrameLayout& layout = {}) {
        const Frame input(format, width, height);
        Frame output(format, width, height, layout);
        newLogLines();
        EXPECT_EQ(effect.render(input, output).error, 0);
        return newLogLines();
    }

    Lines logged(host_sim::Instance& effect) {
        return logged(effect, PrPixelFormat_ARGB_4444_8u, 8, 4);
    }
};

std::string line(const char* amount, const char* lut) {
    return std::string("Render fmt=ARGB8 8x4 rowbytes=64 ") + amount + " " + lut;
}

TEST_F(RenderLog, tellsFormatSizeAndLut_inAfterEffects) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, scatteredText(17, 1, 42, "Dusk")), 0);
    EXPECT_EQ(logged(effect, PrPixelFormat_ARGB_4444_8u, 19, 5),
              Lines({"Render fmt=ARGB8 19x5 rowbytes=108 id=42 amount=1.000 lut=embedded 17"}));
}

TEST_F(RenderLog, tellsFormatSizeAndLut_inPremierePro) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    effect.setSlider(kAmount, 25.0);
    ASSERT_EQ(effect.scan(kLut, scatteredText(2, 1, -3)), 0);
    EXPECT_EQ(logged(effect, PrPixelFormat_BGRA_4444_8u, 19, 5),
              Lines({"Render fmt=BGRA8u 19x5 rowbytes=108 id=-3 amount=0.250 lut=embedded 2"}));
    EXPECT_EQ(logged(effect, PrPixelFormat_BGRA_4444_32f, 19, 5, {.padding = 16, .bottomUp = true}),
              Lines({"Render fmt=BGRA32f 19x5 rowbytes=-320 id=-3 amount=0.250 lut=embedded 2"}));
}

// 0.3335 is a little more than that in double precision, and less in single.
TEST_F(RenderLog, roundsAmountToSinglePrecisionFirst) {
    host_sim::Instance& effect = start();
    effect.setSlider(kAmount, 33.35);
    EXPECT_EQ(logged(effect), Lines({line("id=0 amount=0.333", "lut=none 0")}));
}

TEST_F(RenderLog, tellsTheOutputsSize_whenTheInputsDiffers) {
    host_sim::Instance& effect = start();
    const Frame input(PrPixelFormat_ARGB_4444_8u, 30, 20);
    Frame output(PrPixelFormat_ARGB_4444_8u, 6, 9, {.padding = 0});
    newLogLines();
    effect.render(input, output);
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=ARGB8 6x9 rowbytes=24 id=0 amount=1.000 lut=none 0"}));
}

TEST_F(RenderLog, tellsNone_whenTheParameterHoldsNoLut) {
    EXPECT_EQ(logged(start()), Lines({line("id=0 amount=1.000", "lut=none 0")}));
}

TEST_F(RenderLog, stillTellsEmbedded_whenAmountIsZero) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    effect.setSlider(kAmount, 0.0);
    EXPECT_EQ(logged(effect), Lines({line("id=7 amount=0.000", "lut=embedded 2")}));
}

TEST_F(RenderLog, tellsThePatternAndItsSize) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, "TWLUTP 33"), 0);
    EXPECT_EQ(logged(effect), Lines({line("id=0 amount=1.000", "lut=pattern 33")}));
}

TEST_F(RenderLog, tellsTheLargestId) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, scatteredText(2, 1, 9223372036854775807L)), 0);
    EXPECT_EQ(logged(effect),
              Lines({line("id=9223372036854775807 amount=1.000", "lut=embedded 2")}));
}

TEST_F(RenderLog, leavesOneLine_whenFramesAreAlike) {
    host_sim::Instance& effect = start();
    EXPECT_EQ(logged(effect).size(), 1U);
    for (int frame = 0; frame < 5; ++frame)
        EXPECT_EQ(logged(effect), Lines()) << frame;
}

TEST_F(RenderLog, leavesALineForEachChange) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    effect.setSlider(kAmount, 50.0);
    EXPECT_EQ(logged(effect), Lines({line("id=7 amount=0.500", "lut=embedded 2")}));
    effect.setSlider(kAmount, 50.1);
    EXPECT_EQ(logged(effect), Lines({line("id=7 amount=0.501", "lut=embedded 2")}));
    effect.setSlider(kAmount, 50.0);
    EXPECT_EQ(logged(effect), Lines({line("id=7 amount=0.500", "lut=embedded 2")}));
    EXPECT_EQ(logged(effect, PrPixelFormat_ARGB_4444_8u, 8, 4, {.bottomUp = true}).size(), 1U);
    EXPECT_EQ(logged(effect, PrPixelFormat_ARGB_4444_8u, 8, 5).size(), 1U);
    ASSERT_EQ(effect.scan(kLut, scatteredText(2, 5, 8)), 0);
    EXPECT_EQ(logged(effect, PrPixelFormat_ARGB_4444_8u, 8, 5).size(), 1U);
}

TEST_F(RenderLog, leavesNoLine_whenAChangeDoesNotShowInIt) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    effect.setSlider(kAmount, 50.0);
    logged(effect);
    effect.setSlider(kAmount, 50.00001);
    EXPECT_EQ(logged(effect), Lines());
    // Another LUT, but with the same id and size.
    ASSERT_EQ(effect.scan(kLut, scatteredText(2, 5, 7)), 0);
    EXPECT_EQ(logged(effect), Lines());
}

TEST_F(RenderLog, comparesWithTheLastLine_whicheverInstanceLeftIt) {
    host_sim::Instance& first = start();
    host_sim::Instance& second = host->duplicate(first);
    EXPECT_EQ(logged(first).size(), 1U);
    EXPECT_EQ(logged(second), Lines());
    second.setSlider(kAmount, 1.0);
    EXPECT_EQ(logged(second).size(), 1U);
    EXPECT_EQ(logged(first).size(), 1U);
}

struct Undecodable {
    Bytes bytes;
    const char* message;
};

TEST_F(RenderLog, saysOnceWhatIsWrong_whenTheLutCannotBeRead) {
    host_sim::Instance& effect = start();
    effect.setSlider(kAmount, 25.0);
    logged(effect);
    const std::vector<Undecodable> rows = {
        {bytesOf("foreign data"), "parameter does not hold TWLUT text"},
        {bigEndian("TWLUT0"), "parameter does not hold TWLUT text"},
        {widened("TWLUTP 65"), "bad calibration pattern size"},
        {widened("TWLUT3 nonsense"),
         "not a Tintwell LUT (expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)"},
        {widened("TWLUT9 2 0 1"),
         "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)"},
        {widened("TWLUT3 0 - 200 0 1 AAAA"), "LUT size out of range"},
        {widened("TWLUT3 0 - 2 0 1 AAAA"), "LUT data is truncated"}};
    for (const Undecodable& row : rows) {
        SCOPED_TRACE(row.message);
        effect.setBytes(kLut, row.bytes);
        EXPECT_EQ(logged(effect), Lines({std::string("Embedded LUT: ") + row.message}));
        EXPECT_EQ(logged(effect), Lines());
    }
}

TEST_F(RenderLog, saysWhatIsWrong_beforeTheValueIsUnlocked) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, widened("TWLUTP 65"));
    const PF_ArbitraryH value = effect.arbitrary(kLut);
    newLogLines();
    std::vector<Lines> before;  // what each call of the host's finds in the log
    std::size_t locks = 0;
    host->watchCallbacks([&] {
        before.push_back(newLogLines());
        locks = host->handles().effectLocks(value);
    });
    const Frame input(PrPixelFormat_ARGB_4444_8u, 8, 4);
    Frame output = input;
    EXPECT_EQ(effect.render(input, output).error, 0);
    host->watchCallbacks({});
    // The last call found the value still locked: it was the unlock.
    EXPECT_EQ(locks, 1U);
    ASSERT_GE(before.size(), 2U);
    EXPECT_EQ(before.back(), Lines{"Embedded LUT: bad calibration pattern size"});
    before.pop_back();
    EXPECT_EQ(before, std::vector<Lines>(before.size()));
}

TEST_F(RenderLog, saysNothing_whenTheParameterIsTooShortToHoldText) {
    host_sim::Instance& effect = start();
    logged(effect);
    for (const Bytes& bytes : {Bytes(), bytesOf("TWLUT")}) {
        effect.setBytes(kLut, bytes);
        EXPECT_EQ(logged(effect), Lines());
    }
}

TEST_F(RenderLog, copiesThePicture_whenTheLutCannotBeRead) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    effect.setBytes(kLut, widened("TWLUT3 0 - 2 0 1 AAAA"));
    const Frame input = scattered(PrPixelFormat_BGRA_4444_32f, 7, 5);
    Frame output(PrPixelFormat_BGRA_4444_32f, 7, 5);
    EXPECT_EQ(effect.render(input, output).error, 0);
    EXPECT_TRUE(samePixels(input, output));
}

TEST_F(RenderLog, writesAFullStop_whenTheHostsLocaleHasAComma) {
    const twtest::CommaLocale comma;
    if (!comma.usable()) GTEST_SKIP() << "no locale with a decimal comma";
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    effect.setSlider(kAmount, 50.1);
    EXPECT_EQ(logged(effect), Lines({line("id=0 amount=0.501", "lut=embedded 2")}));
    effect.setSlider(kAmount, 100.0);
    Frame frame(PrPixelFormat_ARGB_4444_8u, 1, 1, {.fill = 0});
    effect.render(frame, frame);
    EXPECT_EQ(frame.pixel8(0, 0), (host_sim::Rgba8{64, 64, 64, 0}));
}

}  // namespace
}  // namespace twtest
