// The TWLUT text and the cache of what it decodes to.
#include <cstring>

#include "bench/measure.h"
#include "bench/scenes.h"
#include "native/src/lut_cache.h"
#include "native/src/lut_text.h"
#include "native/src/text/content_hash.h"
#include "native/src/text/lut_text_reader.h"
#include "tests/support/text_oracle.h"

namespace {

// Measures `work` beside a memcpy of `bytes` bytes from `from`; the unit is one of those bytes.
template <typename Work>
void besideCopy(benchmark::State& state, const void* from, std::size_t bytes, Work work) {
    std::vector<char> to(bytes);
    bench::measureBeside(state, 1, static_cast<double>(bytes), "ns/byte", "x_memcpy", work, [&] {
        std::memcpy(to.data(), from, bytes);
        benchmark::ClobberMemory();
    });
    state.counters["MB/s"] = 1e3 / state.counters["ns/byte"];
}

std::string textOf(const benchmark::State& state) {
    return tw::toEmbeddedText(bench::randomLut(static_cast<std::int32_t>(state.range(0))), 1,
                              "Random");
}

void writeText(benchmark::State& state) {
    const tw::Lut3D lut = bench::randomLut(static_cast<std::int32_t>(state.range(0)));
    const std::string text = tw::toEmbeddedText(lut, 1, "Random");
    besideCopy(state, text.data(), text.size(),
               [&] { benchmark::DoNotOptimize(tw::toEmbeddedText(lut, 1, "Random")); });
}

void readText(benchmark::State& state) {
    const std::string text = textOf(state);
    tw::Lut3D lut;
    besideCopy(state, text.data(), text.size(),
               [&] { benchmark::DoNotOptimize(tw::parseEmbeddedText(text, lut, nullptr)); });
}

// Bytes are those of the 16-bit units.
void narrowText(benchmark::State& state) {
    const std::vector<std::uint16_t> units = tw::toUtf16(textOf(state));
    const std::size_t bytes = units.size() * 2;
    besideCopy(state, units.data(), bytes,
               [&] { benchmark::DoNotOptimize(tw::embeddedText(units.data(), bytes)); });
}

// The first frame: from a parameter's bytes to the record, beside the same with a copy of the text,
// one character and one fused multiply-add at a time.
void readParameter(benchmark::State& state) {
    const std::vector<std::uint16_t> units = tw::toUtf16(textOf(state));
    const std::size_t bytes = units.size() * 2;
    bench::measureBeside(
        state, 1, static_cast<double>(bytes), "ns/byte", "x_literal",
        [&] {
            tw::Lut3D lut;
            benchmark::DoNotOptimize(tw::readParameter(units.data(), bytes, lut, nullptr));
        },
        [&] { benchmark::DoNotOptimize(twtest::readParameterSlowly(units.data(), bytes)); });
    state.counters["ms"] = state.counters["ns/byte"] * static_cast<double>(bytes) * 1e-6;
}

// A LUT that is already decoded, found by its bytes, beside the hash of those bytes alone.
void cacheHit(benchmark::State& state) {
    const std::vector<std::uint16_t> units = tw::toUtf16(textOf(state));
    const std::size_t bytes = units.size() * 2;
    bench::measureBeside(
        state, 1, static_cast<double>(bytes), "ns/byte", "x_hash",
        [&] { benchmark::DoNotOptimize(tw::embeddedLut(units.data(), bytes, nullptr)); },
        [&] { benchmark::DoNotOptimize(tw::contentHash(units.data(), bytes)); });
    state.counters["MB/s"] = 1e3 / state.counters["ns/byte"];
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("lut")
        ->Arg(17)
        ->Arg(33)
        ->Arg(65)
        ->Arg(129)
        ->Iterations(50)
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond);
}

BENCHMARK(writeText)->Apply(sizes);
BENCHMARK(readText)->Apply(sizes);
BENCHMARK(narrowText)->Apply(sizes);
BENCHMARK(readParameter)->Apply(sizes);
BENCHMARK(cacheHit)->Apply(sizes);

}  // namespace
