// The calibration pattern.
#include "bench/measure.h"
#include "bench/scenes.h"
#include "native/src/engine/parallel_rows.h"
#include "native/src/engine/pixel.h"

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

void put(float* pixel, const tw::ChannelMap& to, const float (&colour)[3]) {
    pixel[to.r] = colour[0];
    pixel[to.g] = colour[1];
    pixel[to.b] = colour[2];
    pixel[to.a] = 1.0f;
}

void put(std::uint8_t* pixel, const tw::ChannelMap& to, const float (&colour)[3]) {
    pixel[to.r] = tw::quantise8(colour[0]);
    pixel[to.g] = tw::quantise8(colour[1]);
    pixel[to.b] = tw::quantise8(colour[2]);
    pixel[to.a] = 255;
}

// A pixel at a time, each by its divisions.
template <typename Image>
void fillByPixel(int n, const Image& image) {
    int cols = 0;
    int rows = 0;
    tw::probeGrid(n, image.width, image.height, &cols, &rows);
    const tw::ChannelMap to = tw::channelMap(image.order);
    const std::int64_t steps = n;
    const float k = 1.0f / static_cast<float>(steps - 1);
    tw::parallelRows(image.height, [&](int first, int end) {
        for (std::int64_t y = first; y < end; ++y) {
            auto* pixel = tw::rowOf(image, static_cast<int>(y));
            for (std::int64_t x = 0; x < image.width; ++x, pixel += 4) {
                const std::int64_t index = x * cols / image.width + y * rows / image.height * cols;
                float colour[3] = {};
                if (index < steps * steps * steps) {
                    colour[0] = k * static_cast<float>(index % steps);
                    colour[1] = k * static_cast<float>(index / steps % steps);
                    colour[2] = k * static_cast<float>(index / (steps * steps));
                }
                put(pixel, to, colour);
            }
        }
    });
}

// One thread; argument: steps per channel.
template <typename Frame, auto fill>
void fillPattern(benchmark::State& state) {
    const auto n = static_cast<int>(state.range(0));
    const Frame frame(kWidth, kHeight);
    tw::setHardwareThreads(1);
    bench::measureBeside(
        state, 1, double{kWidth} * kHeight, "ns/pixel", "x_by_pixel", [&] { fill(n, frame.image); },
        [&] { fillByPixel(n, frame.image); });
    tw::setHardwareThreads(0);
    state.counters["ms"] = state.counters["ns/pixel"] * kWidth * kHeight * 1e-6;
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgName("n")->Arg(2)->Arg(17)->Arg(33)->Arg(64)->Iterations(20)->UseManualTime()->Unit(
        benchmark::kMillisecond);
}

BENCHMARK(fillPattern<bench::Frame8, tw::fillProbe8>)->Name("pattern8")->Apply(sizes);
BENCHMARK(fillPattern<bench::FrameF, tw::fillProbeF>)->Name("patternF")->Apply(sizes);

}  // namespace
