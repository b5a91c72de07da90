// Reading .cube files.
#include <cstdlib>
#include <cstring>

#include "bench/measure.h"
#include "bench/scenes.h"

namespace {

// The numbers of the text by strtof alone, each one where the one before stopped.
float sumByStrtof(const std::string& text) {
    float sum = 0;
    const char* at = text.c_str() + text.find("LUT_3D_SIZE");
    at += std::strcspn(at, "\n");
    for (char* stop = nullptr;; at = stop) {
        const float value = std::strtof(at, &stop);
        if (stop == at) return sum;
        sum += value;
    }
}

// Parses the text of a cube, argument: points per axis. The unit is a byte of text.
void parseCube(benchmark::State& state) {
    const std::string text =
        bench::cubeText(bench::randomLut(static_cast<std::int32_t>(state.range(0))));
    tw::Lut3D lut;
    bench::measureBeside(
        state, 1, static_cast<double>(text.size()), "ns/byte", "x_strtof",
        [&] { benchmark::DoNotOptimize(tw::parseCube(text, lut, nullptr)); },
        [&] { benchmark::DoNotOptimize(sumByStrtof(text)); });
    state.counters["MB/s"] = 1e3 / state.counters["ns/byte"];
}

BENCHMARK(parseCube)
    ->ArgName("lut")
    ->Arg(17)
    ->Arg(33)
    ->Arg(65)
    ->Iterations(10)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
