// Grades a row of 1920 pixels COUNT times with one kernel, for programs that count instructions:
// row_once FORM byte|float COUNT. scripts/instructions-per-pixel uses it.
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "bench/scenes.h"
#include "native/src/rows/row_kernels.h"

namespace {

constexpr int kWidth = 1920;

template <typename Frame, typename RowKernel>
void gradeRows(RowKernel* kernel, int count) {
    const tw::Lut3D lut = bench::randomLut(17);
    const Frame src(kWidth, 1, bench::Colours::kWaves);
    const Frame dst(kWidth, 1);
    const tw::ChannelMap map = tw::channelMap(src.image.order);
    for (int i = 0; i < count; ++i)
        kernel(lut, src.image.pixels, map, dst.image.pixels, map, kWidth, 0.8f);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 || !tw::forceRowKernels(argv[1])) {
        std::fprintf(stderr, "row_once FORM byte|float COUNT; no such kernel here\n");
        return 2;
    }
    const int count = std::atoi(argv[3]);
    if (std::string_view(argv[2]) == "byte") {
        gradeRows<bench::Frame8>(tw::rowKernels().row8, count);
    } else {
        gradeRows<bench::FrameF>(tw::rowKernels().rowF, count);
    }
    return 0;
}
