// Whole frames that no cache holds, on one thread and on more.
#include <cstring>

#include "bench/measure.h"
#include "bench/scenes.h"
#include "native/src/engine/parallel_rows.h"

namespace {

constexpr int kWidth = 3840;
constexpr int kHeight = 2160;
constexpr float kAmount = 0.8f;

// A copy of the frame's bytes that is split over the threads as grading it is.
template <typename Image>
void copyFrame(const Image& src, const Image& dst) {
    tw::parallelRows(src.height, [&](int first, int end) {
        const auto* from = reinterpret_cast<const char*>(src.pixels) + first * src.rowBytes;
        auto* to = reinterpret_cast<char*>(dst.pixels) + first * dst.rowBytes;
        std::memcpy(to, from, static_cast<std::size_t>((end - first) * src.rowBytes));
    });
}

// Grades a frame of 3840 x 2160, arguments: points per axis of the LUT, threads.
template <typename Frame, auto apply>
void gradeFrame(benchmark::State& state) {
    const tw::Lut3D lut = bench::randomLut(static_cast<std::int32_t>(state.range(0)));
    const Frame src(kWidth, kHeight, bench::Colours::kWaves);
    const Frame dst(kWidth, kHeight);
    tw::setHardwareThreads(static_cast<unsigned>(state.range(1)));
    bench::measureBeside(
        state, 1, double{kWidth} * kHeight, "ns/pixel", "x_memcpy",
        [&] { apply(lut, src.image, dst.image, kAmount); },
        [&] { copyFrame(src.image, dst.image); });
    tw::setHardwareThreads(0);
}

void frames(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"lut", "threads"})
        ->ArgsProduct({{33, 65}, {1, 2, 4}})
        ->Iterations(20)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(gradeFrame<bench::Frame8, tw::apply8>)->Name("frame8")->Apply(frames);
BENCHMARK(gradeFrame<bench::FrameF, tw::applyF>)->Name("frameF")->Apply(frames);

}  // namespace
