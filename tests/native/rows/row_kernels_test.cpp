#include "native/src/rows/row_kernels.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/native/rows/row_kernels_inputs.h"

namespace tw {
namespace {

constexpr std::int32_t kOrders[] = {kOrderBGRA, kOrderARGB, kOrderRGBA};
constexpr int kWidths[] = {-1, 0, 1, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 63, 64, 65, 100, 131};
constexpr float kCanary = 12345.0f;

const RowKernels* kernelNamed(const std::string& name) {
    for (const RowKernels& kernel : runnableRowKernels()) {
        if (kernel.name == name) return &kernel;
    }
    return nullptr;
}

// The whole suite runs once for each kernel there is on this kind of processor.
class RowKernel : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        kernel_ = kernelNamed(GetParam());
        if (!kernel_) GTEST_SKIP() << "this machine cannot run " << GetParam();
    }

    // Compares one row of floats, graded with `row`, with the scalar kernel's, pixel by pixel, and
    // looks for writes behind its end.
    void expectSameFloats(RowKernelF* row, const Lut3D& lut, std::int32_t fromOrder,
                          std::int32_t toOrder, int width, int shift, float amount) const {
        const ChannelMap from = channelMap(fromOrder);
        const ChannelMap to = channelMap(toOrder);
        const auto used = static_cast<std::size_t>(4 * std::max(width, 0));
        std::vector<float> src(used);
        std::mt19937 random(static_cast<std::uint32_t>(width + 9));
        test::fillOdd(src, lut.size, random);
        std::vector<float> expected(used + 20, kCanary);
        std::vector<float> found = expected;
        kScalarRows.rowF(lut, src.data(), from, expected.data() + shift, to, width, amount);
        row(lut, src.data(), from, found.data() + shift, to, width, amount);
        for (std::size_t i = 0; i < found.size(); ++i) {
            ASSERT_PRED2(test::sameResult, expected[i], found[i])
                << kernel_->name << " width " << width << " shift " << shift << " orders "
                << fromOrder << " to " << toOrder << " element " << i;
        }
    }

    const RowKernels* kernel_ = nullptr;
};

TEST_P(RowKernel, isAFunctionOfItsOwn_andInUseWhenForced) {
    ASSERT_TRUE(forceRowKernels(GetParam()));
    EXPECT_STREQ(rowKernels().name, GetParam());
    EXPECT_EQ(rowKernels().row8, kernel_->row8);
    EXPECT_EQ(rowKernels().rowF, kernel_->rowF);
    for (const RowKernels& other : runnableRowKernels()) {
        if (&other == kernel_) continue;
        EXPECT_NE(other.row8, kernel_->row8) << other.name;
        EXPECT_NE(other.rowF, kernel_->rowF) << other.name;
    }
    EXPECT_TRUE(forceRowKernels(nullptr));
    EXPECT_STREQ(rowKernels().name, runnableRowKernels().back().name);
}

TEST_P(RowKernel, equalsScalarFloats_forEveryWidthAndOrder) {
    const Lut3D lut = test::oddLut(5, 20, 1);
    for (const int width : kWidths) {
        for (const std::int32_t from : kOrders) {
            for (const std::int32_t to : kOrders)
                expectSameFloats(kernel_->rowF, lut, from, to, width, 0, 0.8f);
        }
    }
}

TEST_P(RowKernel, streamsTheSameFloats_whereverTheRowStarts) {
    const Lut3D lut = test::oddLut(5, 20, 1);
    for (const int width : kWidths) {
        for (int shift = 0; shift < 20; ++shift)
            expectSameFloats(kernel_->streamF, lut, kOrderBGRA, kOrderBGRA, width, shift, 0.8f);
    }
}

TEST_P(RowKernel, equalsScalarFloats_forEverySizeDomainAndAmount) {
    for (const std::int32_t size : {2, 3, 17, 33, 65, 129, 256}) {
        const Lut3D lut = test::oddLut(size, 50, 2);
        for (const float amount : {0.0f, 0.8f, 1.0f, -2.0f, 1e30f}) {
            expectSameFloats(kernel_->rowF, lut, kOrderBGRA, kOrderBGRA, 2000, 0, amount);
            expectSameFloats(kernel_->rowF, test::withDomain(lut), kOrderARGB, kOrderBGRA, 2000, 0,
                             amount);
        }
    }
}

// One bound is enough to make a domain non-default.
TEST_P(RowKernel, equalsScalarFloats_whenOneBoundIsNot0Or1) {
    const Lut3D plain = test::oddLut(5, 0, 5);
    for (int channel = 0; channel < 3; ++channel) {
        Lut3D lut = plain;
        lut.domainMax[channel] = 2.0f;
        expectSameFloats(kernel_->rowF, lut, kOrderBGRA, kOrderBGRA, 200, 0, 1.0f);
        lut = plain;
        lut.domainMin[channel] = -1.0f;
        expectSameFloats(kernel_->rowF, lut, kOrderBGRA, kOrderBGRA, 200, 0, 1.0f);
    }
}

// Zero times infinity is NaN: the corners must be the scalar kernel's also where their weight is
// zero. And a sum of negative zeros is a negative zero.
TEST_P(RowKernel, equalsScalarCornersAndSignsOfZero_atTies) {
    const float values[] = {0.0f, -0.0f, 0.25f, 0.5f, 1.0f};
    for (const float special : {std::numeric_limits<float>::infinity(), -0.0f}) {
        Lut3D lut = test::oddLut(3, 0, 3);
        for (std::size_t point = 0; point < lut.data.size() / 3; ++point) {
            for (std::size_t k = 0; k < 3; ++k) {
                if ((point + k) % 3 != 0) lut.data[3 * point + k] = special;
            }
        }
        std::vector<float> src;
        for (const float r : values) {
            for (const float g : values) {
                for (const float b : values)
                    src.insert(src.end(), {b, g, r, 1.0f});
            }
        }
        const ChannelMap map = channelMap(kOrderBGRA);
        const int width = static_cast<int>(src.size() / 4);
        std::vector<float> expected(src.size()), found(src.size());
        kScalarRows.rowF(lut, src.data(), map, expected.data(), map, width, 1.0f);
        kernel_->rowF(lut, src.data(), map, found.data(), map, width, 1.0f);
        for (std::size_t i = 0; i < src.size(); ++i) {
            EXPECT_PRED2(test::sameResult, expected[i], found[i])
                << "of " << src[i / 4 * 4 + 2] << ' ' << src[i / 4 * 4 + 1] << ' ' << src[i / 4 * 4]
                << " channel " << i % 4;
        }
    }
}

TEST_P(RowKernel, copiesAlphaBitForBit) {
    const Lut3D lut = test::oddLut(3, 0, 4);
    const std::uint32_t alphas[] = {0x7F800001, 0xFFFFFFFF, 0x80000000, 0x00000001, 0x7FA12345};
    for (const std::int32_t order : kOrders) {
        const ChannelMap map = channelMap(order);
        std::vector<float> pixels(4 * 70, 0.3f);
        for (int x = 0; x < 70; ++x)
            std::memcpy(&pixels[static_cast<std::size_t>(4 * x + map.a)], &alphas[x % 5], 4);
        for (const auto row : {kernel_->rowF, kernel_->streamF}) {
            std::vector<float> graded(pixels.size());
            row(lut, pixels.data(), map, graded.data(), map, 70, 0.8f);
            for (int x = 0; x < 70; ++x) {
                std::uint32_t alpha;
                std::memcpy(&alpha, &graded[static_cast<std::size_t>(4 * x + map.a)], 4);
                EXPECT_EQ(alpha, alphas[x % 5]) << "pixel " << x << " order " << order;
            }
        }
    }
}

TEST_P(RowKernel, equalsScalarBytes_forEveryWidthAndOrder) {
    std::mt19937 random(6);
    std::vector<std::uint8_t> src(4 * 131);
    for (std::uint8_t& byte : src)
        byte = static_cast<std::uint8_t>(random());
    for (const Lut3D& lut : {test::oddLut(5, 9, 1), test::withDomain(test::oddLut(9, 0, 2))}) {
        for (const int width : kWidths) {
            for (const std::int32_t from : kOrders) {
                for (const std::int32_t to : kOrders) {
                    std::vector<std::uint8_t> expected(4 * 131 + 64, 0xA5);
                    std::vector<std::uint8_t> found = expected;
                    kScalarRows.row8(lut, src.data(), channelMap(from), expected.data(),
                                     channelMap(to), width, 1.2f);
                    kernel_->row8(lut, src.data(), channelMap(from), found.data(), channelMap(to),
                                  width, 1.2f);
                    ASSERT_EQ(found, expected)
                        << "width " << width << " orders " << from << " to " << to;
                }
            }
        }
    }
}

TEST_P(RowKernel, worksInPlace) {
    const Lut3D lut = test::oddLut(5, 0, 7);
    const ChannelMap bgra = channelMap(kOrderBGRA);
    const ChannelMap argb = channelMap(kOrderARGB);
    std::vector<float> floats(4 * 131), expectedFloats(4 * 131);
    std::mt19937 random(8);
    test::fillOdd(floats, 2, random);
    kScalarRows.rowF(lut, floats.data(), bgra, expectedFloats.data(), argb, 131, 0.8f);
    kernel_->rowF(lut, floats.data(), bgra, floats.data(), argb, 131, 0.8f);
    for (std::size_t i = 0; i < floats.size(); ++i)
        ASSERT_PRED2(test::sameResult, expectedFloats[i], floats[i]) << "element " << i;

    std::vector<std::uint8_t> bytes(4 * 131), expectedBytes(4 * 131);
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(random());
    kScalarRows.row8(lut, bytes.data(), bgra, expectedBytes.data(), argb, 131, 0.8f);
    kernel_->row8(lut, bytes.data(), bgra, bytes.data(), argb, 131, 0.8f);
    EXPECT_EQ(bytes, expectedBytes);
}

#if defined(__aarch64__)
constexpr const char* kKernels[] = {"scalar", "neon"};
#else
constexpr const char* kKernels[] = {"scalar", "sse4.1", "avx2", "avx512"};
#endif

INSTANTIATE_TEST_SUITE_P(Kernels, RowKernel, testing::ValuesIn(kKernels), [](const auto& kernel) {
    std::string name = kernel.param;
    std::erase(name, '.');
    return name;
});

TEST(RowKernels, forceRefusesAnUnknownName) {
    EXPECT_FALSE(forceRowKernels("mmx"));
    EXPECT_STREQ(rowKernels().name, runnableRowKernels().back().name);
}

TEST(RowKernels, scalarComesFirst) {
    EXPECT_STREQ(runnableRowKernels().front().name, "scalar");
    EXPECT_EQ(runnableRowKernels().front().row8, kScalarRows.row8);
}

}  // namespace
}  // namespace tw
