// Every row kernel against the scalar one: all 2^24 colours of 8 bits through three LUTs, then
// COUNT random and special float colours through three LUTs in turn. row_kernels_soak [COUNT]
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "native/src/rows/row_kernels.h"
#include "tests/native/rows/row_kernels_inputs.h"

namespace {

using namespace tw;

constexpr int kRow = 4096;
constexpr ChannelMap kMap = channelMap(kOrderBGRA);

const std::vector<Lut3D>& luts() {
    static const std::vector<Lut3D> all = {
        test::oddLut(33, 40, 1), test::withDomain(test::oddLut(17, 0, 2)), test::oddLut(2, 6, 3)};
    return all;
}

bool fail(const char* kernel, const char* kind, std::size_t lut, long long pixel) {
    std::printf("%s, %s, LUT %zu: pixel %lld is not as the scalar kernel's\n", kernel, kind, lut,
                pixel);
    return false;
}

// Colours first .. first + kRow - 1, with an alpha made from the colour.
void fillColours(std::vector<std::uint8_t>& pixels, std::uint32_t first) {
    for (std::uint32_t i = 0; i < kRow; ++i) {
        const std::uint32_t pixel = (first + i) | (first + i) * 0x9E000000u;
        std::memcpy(pixels.data() + 4 * i, &pixel, 4);
    }
}

bool everyByteColour(float amount) {
    std::vector<std::uint8_t> src(4 * kRow), expected(4 * kRow), found(4 * kRow);
    for (std::size_t lut = 0; lut < luts().size(); ++lut) {
        for (std::uint32_t first = 0; first < 1u << 24; first += kRow) {
            fillColours(src, first);
            kScalarRows.row8(luts()[lut], src.data(), kMap, expected.data(), kMap, kRow, amount);
            for (const RowKernels& kernel : runnableRowKernels().subspan(1)) {
                kernel.row8(luts()[lut], src.data(), kMap, found.data(), kMap, kRow, amount);
                if (found != expected) return fail(kernel.name, "8 bits", lut, first);
            }
        }
    }
    return true;
}

bool sameRow(const std::vector<float>& a, const std::vector<float>& b) {
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool alpha = i % 4 == 3;
        const bool same =
            alpha ? std::memcmp(&a[i], &b[i], sizeof a[i]) == 0 : test::sameResult(a[i], b[i]);
        if (!same) return false;
    }
    return true;
}

bool floatColours(long long count, float amount) {
    std::mt19937 random(5);
    std::vector<float> src(4 * kRow), expected(4 * kRow), found(4 * kRow);
    for (long long done = 0; done < count; done += kRow) {
        const std::size_t lut = static_cast<std::size_t>(done / kRow) % luts().size();
        test::fillOdd(src, luts()[lut].size, random);
        kScalarRows.rowF(luts()[lut], src.data(), kMap, expected.data(), kMap, kRow, amount);
        for (const RowKernels& kernel : runnableRowKernels().subspan(1)) {
            for (const auto& [row, what] :
                 {std::pair{kernel.rowF, "float"}, {kernel.streamF, "streamed"}}) {
                row(luts()[lut], src.data(), kMap, found.data(), kMap, kRow, amount);
                if (!sameRow(found, expected)) return fail(kernel.name, what, lut, done);
            }
        }
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    const long long count = argc > 1 ? std::atoll(argv[1]) : 10'000'000;
    for (const RowKernels& kernel : runnableRowKernels())
        std::printf("%s ", kernel.name);
    std::printf("\n");
    const bool same = everyByteColour(0.8f) && floatColours(count, 0.8f);
    if (same) std::printf("all alike: 3 x 2^24 colours of 8 bits, %lld of floats\n", count);
    return same ? 0 : 1;
}
