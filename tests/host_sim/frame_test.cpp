// Frames: memory layout, regions, accessors and canaries.
#include "host_sim/values/frame.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>

#include "host_sim/values/error.h"

namespace {

using host_sim::Frame;
using host_sim::Rgba8;
using host_sim::RgbaF;

std::uint8_t* bytesOf(const PF_EffectWorld& world) {
    return reinterpret_cast<std::uint8_t*>(world.data);
}

TEST(Frame, describesItsWorld) {
    const Frame frame(PrPixelFormat_BGRA_4444_8u, 5, 3, {.padding = 12});
    const PF_EffectWorld world = frame.world();
    EXPECT_EQ(world.width, 5);
    EXPECT_EQ(world.height, 3);
    EXPECT_EQ(world.rowbytes, 32);
    EXPECT_EQ(bytesOf(world)[0], 0xCD);
    EXPECT_EQ(bytesOf(world)[19], 0xCD);
    EXPECT_NE(bytesOf(world)[20], 0xCD);
}

TEST(Frame, hasNegativeRowBytes_bottomUp) {
    Frame frame(PrPixelFormat_ARGB_4444_8u, 2, 2, {.padding = 0, .bottomUp = true});
    frame.setPixel8(0, 1, {1, 2, 3, 4});
    const PF_EffectWorld world = frame.world();
    EXPECT_EQ(world.rowbytes, -8);
    EXPECT_EQ(bytesOf(world)[-8], 4);
    EXPECT_EQ(bytesOf(world)[-7], 1);
}

TEST(Frame, placesChannels_inEachFormat) {
    Frame bgra(PrPixelFormat_BGRA_4444_8u, 1, 1);
    bgra.setPixel8(0, 0, {1, 2, 3, 4});
    EXPECT_EQ(bgra.pixelBytes(), std::vector<std::uint8_t>({3, 2, 1, 4}));
    EXPECT_EQ(bgra.pixel8(0, 0), Rgba8({1, 2, 3, 4}));
    Frame floats(PrPixelFormat_BGRA_4444_32f, 1, 1, {.misalignment = 4});
    floats.setPixelF(0, 0, {0.5F, 2.0F, -1.0F, 1.0F});
    EXPECT_EQ(floats.pixelF(0, 0), RgbaF({0.5F, 2.0F, -1.0F, 1.0F}));
    float blue = 0;
    std::memcpy(&blue, floats.world().data, sizeof blue);
    EXPECT_EQ(blue, -1.0F);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(floats.world().data) % 16, 4U);
}

TEST(Frame, isDeep_with16BitChannels) {
    const Frame frame(PrPixelFormat_BGRA_4444_16u, 2, 1);
    EXPECT_EQ(frame.bytesPerPixel(), 8);
    EXPECT_EQ(frame.world().world_flags, PF_WorldFlag_DEEP);
}

TEST(Frame, showsARegion) {
    Frame frame(PrPixelFormat_BGRA_4444_8u, 4, 4, {.fill = 0});
    frame.setPixel8(2, 3, {9, 9, 9, 9});
    frame.select({1, 2, 3, 2});
    EXPECT_EQ(frame.pixel8(1, 1), Rgba8({9, 9, 9, 9}));
    EXPECT_THROW(frame.pixel8(3, 0), host_sim::SimError);
    EXPECT_THROW(frame.select({2, 0, 3, 1}), host_sim::SimError);
}

TEST(Frame, showsFieldsAtDoubledRowBytes) {
    Frame frame(PrPixelFormat_BGRA_4444_8u, 1, 5, {.padding = 4});
    frame.selectField(PF_Field_UPPER);
    EXPECT_EQ(frame.height(), 3);
    EXPECT_EQ(frame.rowBytes(), 16);
    frame.selectField(PF_Field_LOWER);
    EXPECT_EQ(frame.height(), 2);
    frame.fill(7);
    frame.selectAll();
    EXPECT_EQ(frame.pixel8(0, 1)[0], 7);
    EXPECT_EQ(frame.pixel8(0, 2)[0], 0xCD);
    EXPECT_EQ(frame.pixel8(0, 3)[0], 7);
}

TEST(Frame, reportsDamagedCanaries) {
    const Frame frame(PrPixelFormat_BGRA_4444_8u, 2, 2, {.padding = 4});
    EXPECT_EQ(frame.damage(), std::nullopt);
    std::uint8_t* bytes = bytesOf(frame.world());
    bytes[12 + 8 + 3] ^= 1;
    EXPECT_EQ(frame.damage(), "byte 3 after the end of row 1");
    bytes[24] ^= 1;
    EXPECT_EQ(frame.damage(), "byte 0 of the margin after the picture");
    bytes[-1] ^= 1;
    EXPECT_EQ(frame.damage(), "byte 63 of the margin before the picture");
}

TEST(Frame, reportsChangesOutsideTheField) {
    Frame frame(PrPixelFormat_BGRA_4444_8u, 2, 4);
    frame.selectField(PF_Field_LOWER);
    const Frame before = frame;
    frame.fill(1);
    EXPECT_EQ(frame.changeOutside(before), std::nullopt);
    EXPECT_FALSE(frame.sameMemory(before));
    bytesOf(frame.world())[-40] = 1;
    EXPECT_EQ(frame.changeOutside(before), "byte 0 of row 0");
}

TEST(Frame, refusesWhatCannotBe) {
    EXPECT_THROW(Frame(PrPixelFormat_Any, 1, 1), host_sim::SimError);
    EXPECT_THROW(Frame(PrPixelFormat_BGRA_4444_8u, -1, 1), host_sim::SimError);
    EXPECT_THROW(Frame(PrPixelFormat_BGRA_4444_32f, 1, 1, {.padding = 2}), host_sim::SimError);
    const Frame frame(PrPixelFormat_BGRA_4444_8u, 1, 1);
    EXPECT_THROW(frame.pixelF(0, 0), host_sim::SimError);
}

}  // namespace
