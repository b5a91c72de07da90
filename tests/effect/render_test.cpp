// What a render makes of the LUT parameter and Amount, in values worked out by hand.
#include <limits>

#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;
using host_sim::Rgba8;
using host_sim::RgbaF;

class Render : public EffectTest {
protected:
    // One 8-bit pixel, red, green, blue, alpha, through After Effects.
    Rgba8 rendered(host_sim::Instance& effect, const Rgba8& pixel) {
        Frame input(PrPixelFormat_ARGB_4444_8u, 1, 1), output(PrPixelFormat_ARGB_4444_8u, 1, 1);
        input.setPixel8(0, 0, pixel);
        EXPECT_EQ(effect.render(input, output).error, 0);
        return output.pixel8(0, 0);
    }

    static RgbaF rendered(host_sim::Instance& effect, const RgbaF& pixel) {
        Frame input(PrPixelFormat_BGRA_4444_32f, 1, 1), output(PrPixelFormat_BGRA_4444_32f, 1, 1);
        input.setPixelF(0, 0, pixel);
        EXPECT_EQ(effect.render(input, output).error, 0);
        return output.pixelF(0, 0);
    }
};

TEST_F(Render, passesThePictureThrough_whenTheInstanceIsNew) {
    host_sim::Instance& effect = start();
    EXPECT_EQ(rendered(effect, Rgba8{1, 2, 3, 4}), (Rgba8{1, 2, 3, 4}));
    EXPECT_EQ(rendered(effect, Rgba8{255, 0, 128, 0}), (Rgba8{255, 0, 128, 0}));
}

TEST_F(Render, appliesTheLutFully_whenAmountIs100) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{20, 30, 10, 40}));
    EXPECT_EQ(rendered(effect, Rgba8{255, 0, 77, 0}), (Rgba8{0, 77, 255, 0}));
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{64, 64, 64, 40}));
}

TEST_F(Render, goesHalfTheWay_whenAmountIs50) {
    host_sim::Instance& effect = start();
    effect.setSlider(kAmount, 50.0);
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{15, 25, 20, 40}));
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{255, 0, 255, 1}), (Rgba8{159, 32, 159, 1}));
}

TEST_F(Render, keepsFloatsUnclamped_inPremierePro) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    EXPECT_EQ(rendered(effect, RgbaF{0.1f, 2.0f, -1.0f, 7.5f}), (RgbaF{0.25f, 0.25f, 0.25f, 7.5f}));
    effect.setSlider(kAmount, 50.0);
    EXPECT_EQ(rendered(effect, RgbaF{0.75f, 4.25f, -1.25f, -0.5f}),
              (RgbaF{0.5f, 2.25f, -0.5f, -0.5f}));
}

TEST_F(Render, leavesThePictureUnchanged_whenAmountIsZero) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    for (const double amount : {0.0, -0.0, -25.0, std::numeric_limits<double>::quiet_NaN()}) {
        effect.setSlider(kAmount, amount);
        EXPECT_EQ(rendered(effect, RgbaF{0.1f, 2.0f, -1.0f, 7.5f}),
                  (RgbaF{0.1f, 2.0f, -1.0f, 7.5f}))
            << amount;
    }
}

TEST_F(Render, goesBeyondTheLut_whenAmountIsAbove100) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    effect.setSlider(kAmount, 200.0);
    EXPECT_EQ(rendered(effect, RgbaF{0.75f, 0.0f, 0.25f, 1.0f}),
              (RgbaF{-0.25f, 0.5f, 0.25f, 1.0f}));
}

TEST_F(Render, passesThePictureThrough_whenTheLutHandleIsNull) {
    host_sim::Instance& effect = start();
    effect.setNull(kLut);
    newLogLines();
    EXPECT_EQ(rendered(effect, Rgba8{1, 2, 3, 4}), (Rgba8{1, 2, 3, 4}));
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=ARGB8 1x1 rowbytes=36 id=0 amount=1.000 lut=none 0"}));
}

TEST_F(Render, passesThePictureThroughSilently_whenTheLutCannotBeLocked) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, widened(quarterText()));
    newLogLines();
    host->refusals().fail(host_sim::Refusal::kLock, 1);
    EXPECT_EQ(rendered(effect, Rgba8{1, 2, 3, 4}), (Rgba8{1, 2, 3, 4}));
    EXPECT_EQ(host->handles().counts().unlocksAfterRefusal, 1U);
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=ARGB8 1x1 rowbytes=36 id=0 amount=1.000 lut=none 0"}));
    EXPECT_EQ(rendered(effect, Rgba8{1, 2, 3, 4}), (Rgba8{64, 64, 64, 4}));
}

// Worlds that host_sim::Frame cannot make.
TEST_F(Render, copiesNothing_whenASizeIsNegative) {
    const PF_FilterProc effectMain =
        openHost(host_sim::afterEffects()).module().command("EffectMain");
    for (const auto& [width, height] : {std::pair{-1, 2}, {2, -1}, {-1, -1}}) {
        PF_InData in = {};
        in.appl_id = host_sim::afterEffects().applId;
        PF_OutData out = {};
        // A negative count of bytes may also copy what lies before the pixels.
        std::vector<A_u_char> from(1024, 1), to(1024, 0);
        PF_ParamDef input = {}, amount = {}, lut = {};
        input.u.ld.data = reinterpret_cast<PF_PixelPtr>(from.data() + 512);
        input.u.ld.width = width;
        input.u.ld.height = height;
        PF_LayerDef output = input.u.ld;
        output.data = reinterpret_cast<PF_PixelPtr>(to.data() + 512);
        PF_ParamDef* params[] = {&input, &amount, &lut};
        EXPECT_EQ(effectMain(PF_Cmd_RENDER, &in, &out, params, &output, nullptr), 0);
        EXPECT_EQ(to, std::vector<A_u_char>(1024, 0)) << width << " x " << height;
    }
}

TEST_F(Render, readsTextOfEightBits) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, bytesOf(rotationText()));
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{20, 30, 10, 40}));
}

TEST_F(Render, followsTheParameter_whenItsLutChanges) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{20, 30, 10, 40}));
    ASSERT_EQ(effect.scan(kLut, quarterText()), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{64, 64, 64, 40}));
    ASSERT_EQ(effect.scan(kLut, "TWLUT0"), 0);
    EXPECT_EQ(rendered(effect, Rgba8{10, 20, 30, 40}), (Rgba8{10, 20, 30, 40}));
}

TEST_F(Render, touchesNeitherOutDataNorLut) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    host->outPreset() = fullOutData();
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 4, 4);
    Frame output(PrPixelFormat_ARGB_4444_8u, 4, 4);
    EXPECT_TRUE(sameBytes(effect.render(input, output).out, fullOutData()));
    EXPECT_EQ(host->handles().contents(effect.arbitrary(kLut)), widened(rotationText()));
    EXPECT_EQ(host->handles().counts().resizes, 0U);
}

TEST_F(Render, drawsThePattern_whenThePanelCalibrates) {
    host_sim::Instance& effect = start();
    ASSERT_EQ(effect.scan(kLut, "TWLUTP 2"), 0);
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 4, 2);
    Frame output(PrPixelFormat_ARGB_4444_8u, 4, 2);
    for (const double amount : {100.0, 37.5, 0.0}) {
        effect.setSlider(kAmount, amount);
        output.fill(0xCD);
        ASSERT_EQ(effect.render(input, output).error, 0);
        for (int patch = 0; patch < 8; ++patch) {
            const auto level = [patch](int bit) {
                return static_cast<std::uint8_t>((patch & bit) != 0 ? 255 : 0);
            };
            EXPECT_EQ(output.pixel8(patch % 4, patch / 4),
                      (Rgba8{level(1), level(2), level(4), 255}))
                << "patch " << patch << ", Amount " << amount;
        }
    }
}

}  // namespace
}  // namespace twtest
