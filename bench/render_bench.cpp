// Whole PF_Cmd_RENDER calls: how much of a frame is not grading.
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "bench/bench_host.h"
#include "bench/measure.h"
#include "bench/scenes.h"
#include "native/src/engine/parallel_rows.h"
#include "native/src/lut_text.h"

namespace {

// The LUT parameter's bytes, for LUTs that differ in their samples too.
std::unique_ptr<bench::Handle> storedLut(std::int32_t size, int nth) {
    tw::Lut3D lut = bench::randomLut(size);
    lut.data[0] = static_cast<float>(nth) * 0.1f;
    const std::vector<std::uint16_t> units = tw::toUtf16(tw::toEmbeddedText(lut, nth, "Random"));
    return std::make_unique<bench::Handle>(
        std::string(reinterpret_cast<const char*>(units.data()), units.size() * 2));
}

// A picture of `width` x `height`, and one of a single pixel: rendering that is what a frame takes
// besides its pixels.
template <typename Frame>
struct Calls {
    Calls(int width, int height)
        : src(width, height, bench::Colours::kWaves),
          dst(width, height),
          pixelSrc(1, 1),
          pixelDst(1, 1) {}

    Frame src, dst, pixelSrc, pixelDst;
    bench::RenderCall frame{src.image, dst.image};
    bench::RenderCall pixel{pixelSrc.image, pixelDst.image};
};

// The log goes into a folder of its own.
class TempHome {
public:
    TempHome() : path_(std::filesystem::temp_directory_path() / "tintwell-bench-home") {
        std::filesystem::create_directories(path_);
        setenv("HOME", path_.c_str(), 1);
    }
    ~TempHome() { std::filesystem::remove_all(path_); }

private:
    std::filesystem::path path_;
};

// Arguments: points per axis of the LUT, rows of a 16:9 picture, threads. Counters, each from the
// quickest call: milliseconds of a whole frame; of what is not grading, after a frame has passed
// through the caches; and the same where three LUTs take turns, so that every call hashes its LUT,
// as all calls did before contents were kept. Shares of the frame, in percent: those two, and what
// they are when the pixels are graded 8 and 16 times as fast as on one thread.
template <typename Frame>
void renderFrame(benchmark::State& state) {
    const auto size = static_cast<std::int32_t>(state.range(0));
    const auto height = static_cast<int>(state.range(1));
    const TempHome home;
    Calls<Frame> calls(height / 9 * 16, height);
    const auto kept = storedLut(size, 0);
    const std::array turns = {storedLut(size, 1), storedLut(size, 2), storedLut(size, 3)};
    std::size_t turn = 0;
    bool ok = true;
    const auto timed = [&](bench::RenderCall& call, bench::Handle& lut) {
        return bench::secondsPerCall(1, [&] { ok = call.render(lut) && ok; });
    };
    const auto next = [&]() -> bench::Handle& { return *turns[turn++ % turns.size()]; };
    for (const auto& lut : turns)
        timed(calls.pixel, *lut);
    for (int i = 0; i < 3; ++i)
        timed(calls.pixel, *kept);

    tw::setHardwareThreads(static_cast<unsigned>(state.range(2)));
    double frame = 1e9, rest = 1e9, hashed = 1e9;
    for (auto _ : state) {
        const double seconds = timed(calls.frame, *kept);
        state.SetIterationTime(seconds);
        frame = std::min(frame, seconds);
        rest = std::min(rest, timed(calls.pixel, *kept));
        timed(calls.frame, next());
        hashed = std::min(hashed, timed(calls.pixel, next()));
    }
    const double threads = static_cast<double>(state.range(2));
    tw::setHardwareThreads(0);
    if (!ok) state.SkipWithError("the effect reports an error");
    const double grading = (frame - rest) * threads;
    const auto share = [](double part, double pixels) { return 100 * part / (part + pixels); };
    state.counters["frame_ms"] = frame * 1e3;
    state.counters["rest_ms"] = rest * 1e3;
    state.counters["hashed_ms"] = hashed * 1e3;
    state.counters["x_hashed"] = rest / hashed;
    state.counters["%"] = share(rest, frame - rest);
    state.counters["%hashed"] = share(hashed, frame - rest);
    for (const int count : {8, 16}) {
        const std::string name = "%" + std::to_string(count);
        state.counters[name] = share(rest, grading / count);
        state.counters[name + "hashed"] = share(hashed, grading / count);
    }
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"lut", "rows", "threads"})
        ->ArgsProduct({{33, 65, 129}, {1080, 2160}, {1, 2}})
        ->Iterations(20)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

BENCHMARK(renderFrame<bench::Frame8>)->Name("render8")->Apply(sizes);
BENCHMARK(renderFrame<bench::FrameF>)->Name("renderF")->Apply(sizes);

}  // namespace
