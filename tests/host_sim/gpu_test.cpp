// The simulated host's GPU side by itself: half floats, frames and the books of its memory.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>

#include "host_sim/gpu/gpu_frame.h"
#include "host_sim/gpu/gpu_memory.h"
#include "host_sim/gpu/half.h"

namespace {

using host_sim::Books;
using host_sim::Frame;
using host_sim::fromHalf;
using host_sim::GpuFrame;
using host_sim::GpuMemory;
using host_sim::toHalf;

TEST(Half, knowsItsLandmarks) {
    EXPECT_EQ(fromHalf(0x3C00), 1.0f);
    EXPECT_EQ(fromHalf(0xC000), -2.0f);
    EXPECT_EQ(fromHalf(0x7BFF), 65504.0f);
    EXPECT_EQ(fromHalf(0x0400), 0x1p-14f);
    EXPECT_EQ(fromHalf(0x0001), 0x1p-24f);
    EXPECT_TRUE(std::isinf(fromHalf(0x7C00)));
    EXPECT_TRUE(std::isnan(fromHalf(0x7E00)));
    EXPECT_TRUE(std::signbit(fromHalf(0x8000)));
}

TEST(Half, comesBackFromEveryCode) {
    for (unsigned code = 0; code < 0x10000; ++code) {
        const auto bits = static_cast<std::uint16_t>(code);
        const float value = fromHalf(bits);
        if (std::isnan(value)) {
            EXPECT_TRUE(std::isnan(fromHalf(toHalf(value))));
        } else {
            ASSERT_EQ(toHalf(value), bits);
        }
    }
}

TEST(Half, roundsToTheNearestAndTiesToEven) {
    EXPECT_EQ(toHalf(1.0f + 0x1p-11f), 0x3C00);
    EXPECT_EQ(toHalf(1.0f + 3 * 0x1p-11f), 0x3C02);
    EXPECT_EQ(toHalf(1.0f + 0x1.02p-11f), 0x3C01);
    EXPECT_EQ(toHalf(0x1p-25f), 0x0000);
    EXPECT_EQ(toHalf(3 * 0x1p-25f), 0x0002);
    EXPECT_EQ(toHalf(65519.0f), 0x7BFF);
    EXPECT_EQ(toHalf(65520.0f), 0x7C00);
    EXPECT_EQ(toHalf(-std::numeric_limits<float>::infinity()), 0xFC00);
}

TEST(GpuFrame, keepsAPicture) {
    const host_sim::MetalObject device = host_sim::newMetalDevice();
    Frame picture(PrPixelFormat_BGRA_4444_32f, 2, 2);
    picture.setPixelF(1, 1, {0.25f, 0.5f, -2.0f, 1.0f});
    for (const auto format : {PrPixelFormat_GPU_BGRA_4444_32f, PrPixelFormat_GPU_BGRA_4444_16f}) {
        const GpuFrame frame(device, format, picture);
        EXPECT_EQ(frame.download().pixelF(1, 1), (host_sim::RgbaF{0.25f, 0.5f, -2.0f, 1.0f}));
        EXPECT_EQ(frame.rowBytes(), format == PrPixelFormat_GPU_BGRA_4444_32f ? 80 : 40);
        EXPECT_EQ(frame.damage(), std::nullopt);
    }
}

TEST(GpuMemory, knowsWhatItGaveOut) {
    Books books;
    GpuMemory memory(books);
    const PrMemoryPtr block = memory.allocate({1, 2, 3});
    EXPECT_EQ(memory.size(block), 3U);
    memory.dispose(block);
    EXPECT_EQ(memory.disposed(), 1);
    EXPECT_EQ(books.problems(), std::vector<std::string>());
}

TEST(GpuMemory, reportsStrangersAndLeftovers) {
    Books books;
    GpuMemory memory(books);
    char stranger = 0;
    memory.dispose(&stranger);
    EXPECT_EQ(memory.size(&stranger), 0U);
    memory.allocate({1});
    memory.reportLeftovers();
    const std::vector<std::string> problems = books.problems();
    ASSERT_EQ(problems.size(), 3U);
    EXPECT_TRUE(problems[0].starts_with("PrDisposePtr was given an unknown block"));
    EXPECT_TRUE(problems[1].starts_with("GetPtrSize was given an unknown block"));
    EXPECT_TRUE(problems[2].starts_with("1 block(s) of memory were not disposed of"));
}

}  // namespace
