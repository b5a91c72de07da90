// One row of 1920 pixels that stays in the cache: the arithmetic alone.
#include <cstring>

#include "bench/measure.h"
#include "bench/scenes.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kCalls = 20;
constexpr float kAmount = 0.8f;

// Grades one row of 1920 pixels, arguments: points per axis of the LUT, 1 for random colours.
template <typename Frame, auto apply>
void gradeRow(benchmark::State& state) {
    const auto colours = state.range(1) ? bench::Colours::kRandom : bench::Colours::kWaves;
    const tw::Lut3D lut = bench::randomLut(static_cast<std::int32_t>(state.range(0)));
    const Frame src(kWidth, 1, colours);
    const Frame dst(kWidth, 1);
    bench::measureBeside(
        state, kCalls, kWidth, "ns/pixel", "x_memcpy",
        [&] {
            apply(lut, src.image, dst.image, kAmount);
            benchmark::ClobberMemory();
        },
        [&] {
            std::memcpy(dst.image.pixels, src.image.pixels, src.bytes());
            benchmark::ClobberMemory();
        });
}

void rows(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"lut", "random"})->ArgsProduct({{17, 33, 65, 129}, {0, 1}})->UseManualTime();
}

BENCHMARK(gradeRow<bench::Frame8, tw::apply8>)->Name("row8")->Apply(rows);
BENCHMARK(gradeRow<bench::FrameF, tw::applyF>)->Name("rowF")->Apply(rows);

}  // namespace
