// One row of 1920 pixels that stays in the cache: the arithmetic alone, in every kernel that this
// machine can run, beside the scalar kernel.
#include <string>

#include "bench/measure.h"
#include "bench/photograph.h"
#include "bench/scenes.h"
#include "native/src/rows/row_kernels.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kCalls = 20;
constexpr float kAmount = 0.8f;

// Besides bench::Colours.
constexpr int kPhotograph = 2;

template <typename Frame, typename RowKernel>
void gradeRow(benchmark::State& state, RowKernel* kernel, RowKernel* scalar) {
    const auto colours = static_cast<bench::Colours>(state.range(1));
    const tw::Lut3D lut = bench::randomLut(static_cast<std::int32_t>(state.range(0)));
    Frame src(kWidth, 1, colours);
    if (state.range(1) == kPhotograph && !bench::paintPhotograph(src.image)) {
        state.SkipWithError("no photograph: run scripts/fetch-samples");
        return;
    }
    const Frame dst(kWidth, 1);
    const auto grade = [&](RowKernel* with) {
        const tw::ChannelMap map = tw::channelMap(src.image.order);
        with(lut, src.image.pixels, map, dst.image.pixels, map, kWidth, kAmount);
        benchmark::ClobberMemory();
    };
    bench::measureBeside(
        state, kCalls, kWidth, "ns/pixel", "x_scalar", [&] { grade(kernel); },
        [&] { grade(scalar); });
}

// Arguments: points per axis of the LUT; 0 for waves, 1 for random colours, 2 for a row of a
// photograph.
template <typename Frame, typename RowKernel>
void add(const std::string& name, RowKernel* kernel, RowKernel* scalar) {
    benchmark::RegisterBenchmark(name.c_str(), gradeRow<Frame, RowKernel>, kernel, scalar)
        ->ArgNames({"lut", "colours"})
        ->ArgsProduct({{17, 33, 65, 129}, {0, 1, kPhotograph}})
        ->Iterations(100)
        ->UseManualTime();
}

const bool added = [] {
    const tw::RowKernels& scalar = tw::runnableRowKernels().front();
    for (const tw::RowKernels& kernel : tw::runnableRowKernels()) {
        add<bench::Frame8>(std::string("row8/") + kernel.name, kernel.row8, scalar.row8);
        add<bench::FrameF>(std::string("rowF/") + kernel.name, kernel.rowF, scalar.rowF);
    }
    return true;
}();

}  // namespace
