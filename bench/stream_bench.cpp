// Large float frames written around the caches, beside the same frames written as usual.
#include <string>

#include "bench/measure.h"
#include "bench/photograph.h"
#include "bench/scenes.h"
#include "native/src/engine/parallel_rows.h"
#include "native/src/rows/row_kernels.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
constexpr int kPhotograph = 2;  // besides bench::Colours

// Arguments: points per axis; 0 for waves, 1 for random colours, 2 for the photograph; threads.
void streamFrame(benchmark::State& state, const tw::RowKernels* kernel) {
    const tw::Lut3D lut = bench::randomLut(static_cast<std::int32_t>(state.range(0)));
    bench::FrameF src(kWidth, kHeight, static_cast<bench::Colours>(state.range(1)));
    if (state.range(1) == kPhotograph && !bench::paintPhotograph(src.image)) {
        state.SkipWithError("no photograph: run scripts/fetch-samples");
        return;
    }
    const bench::FrameF dst(kWidth, kHeight);
    const auto grade = [&](tw::RowKernelF* row) {
        const tw::ChannelMap map = tw::channelMap(src.image.order);
        tw::parallelRows(kHeight, [&](int first, int end) {
            for (int y = first; y < end; ++y) {
                row(lut, tw::rowOf(src.image, y), map, tw::rowOf(dst.image, y), map, kWidth, 0.8f);
            }
        });
    };
    tw::setHardwareThreads(static_cast<unsigned>(state.range(2)));
    bench::measureBeside(
        state, 1, double{kWidth} * kHeight, "ns/pixel", "x_usual", [&] { grade(kernel->streamF); },
        [&] { grade(kernel->rowF); });
    tw::setHardwareThreads(0);
}

const bool added = [] {
    for (const tw::RowKernels& kernel : tw::runnableRowKernels()) {
        if (kernel.streamF == kernel.rowF) continue;
        benchmark::RegisterBenchmark((std::string("streamF/") + kernel.name).c_str(), streamFrame,
                                     &kernel)
            ->ArgNames({"lut", "colours", "threads"})
            ->ArgsProduct({{33, 65}, {0, 1, kPhotograph}, {1, 2}})
            ->Iterations(20)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    return true;
}();

}  // namespace
