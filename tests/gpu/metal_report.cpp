// What the kernel does on this system's own Metal device, as Markdown:
// metal_report [--points N] [--times]. The picture against the CPU's over the whole parity table,
// LUTs of more than N points an axis left out; what the compiler fuses; with --times, how long
// things take. Fails when a picture differs by more than flushed subnormals explain.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/gpu/contraction_probe.h"
#include "tests/gpu/differences.h"
#include "tests/gpu/parity_table.h"

namespace {

using twtest::compare;
using twtest::Device;
using twtest::Differences;
using twtest::Handle;
using twtest::ParityFrame;
using twtest::ParityRow;
using twtest::Picture;
using twtest::Shape;

double now() {
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

// One row's differences: those of any size, and those that subnormals do not explain.
struct Sums {
    long values = 0;
    long unequal = 0;
    Differences unexplained;
    std::string where;

    void add(const Picture& expected, const Picture& actual, double bound, const std::string& how) {
        values += static_cast<long>(expected.shape.width) * expected.shape.height * 4;
        unequal += compare(expected, actual).unequal;
        const Differences found = compare(expected, actual, bound);
        if (unexplained.unequal == 0) where = how + ": " + found.first;
        unexplained.unequal += found.unequal;
        unexplained.largest = std::max(unexplained.largest, found.largest);
        if (!actual.paddingIntact()) ++unexplained.unequal, where = how + ": behind the rows";
    }
    bool print(const std::string& name) const {
        const bool good = unexplained.unequal == 0;
        std::printf("| %s | %ld | %ld | %ld | %.3g | %s |\n", name.c_str(), values, unequal,
                    unexplained.unequal, unexplained.largest, good ? "" : where.c_str());
        return good;
    }
};

bool printRow(const Device& device, const ParityRow& row) {
    const tw::Lut3D lut = row.lut();
    bool good = true;
    for (const bool half : {false, true}) {
        Sums sums;
        for (const ParityFrame& frame : row.frames(lut)) {
            if (frame.shape.half != half) continue;
            std::string error;
            const Picture actual = twtest::kernelPicture(device, lut, frame.source, frame.amount,
                                                         frame.place, frame.shape, &error);
            const Picture expected =
                twtest::cpuPicture(lut, frame.source, frame.amount, frame.shape);
            sums.add(expected, actual, twtest::subnormalBound(lut, twtest::kOwnRounding),
                     describe(frame) + error);
        }
        if (sums.values > 0) good = sums.print(row.name + (half ? ", 16f" : ", 32f")) && good;
    }
    return good;
}

bool printPattern(const Device& device) {
    Sums sums;
    for (const int n : twtest::patternSizes()) {
        for (const Shape& shape : twtest::patternShapes()) {
            std::string error;
            const Picture actual = twtest::kernelPattern(device, n, shape, &error);
            sums.add(twtest::cpuPattern(n, shape), actual, 0.0, std::to_string(n) + error);
        }
    }
    return sums.print("calibration pattern, 32f and 16f");
}

bool printPictures(const Device& device, int points) {
    std::puts(
        "\n## Picture: GPU against CPU\n\n"
        "In place and to another buffer, rows with and without padding. \"Unexplained\": further\n"
        "apart than flushed subnormals explain.\n\n"
        "| What | Values | Differ | Unexplained | Largest of these | First of these |\n"
        "|---|---|---|---|---|---|");
    bool good = true;
    for (const ParityRow& row : twtest::parityTable()) {
        if (row.points <= points) good = printRow(device, row) && good;
    }
    return printPattern(device) && good;
}

void printContraction() {
    std::puts("\n## What the compiler fuses, fast maths off\n\n| Written as | |\n|---|---|");
    for (const twtest::ContractionProbe& probe : twtest::probeContraction()) {
        const char* const fused = probe.fused ? "fused" : "not fused";
        std::printf("| %s | %s |\n", probe.name, probe.ran ? fused : probe.error.c_str());
    }
}

// The least of some runs, in nanoseconds a pixel.
double gpuTime(const Device& device, const Picture& source, const Handle& lut,
               const twgpu::LutKernelArgs& args) {
    const Handle picture = upload(device, source);
    double best = 1e300;
    for (int i = 0; i < 8; ++i) {
        double milliseconds = 0.0;
        std::string error;
        if (!twmetal::Launch(device.queue.get(), device.pipeline.get(), picture.get(),
                             picture.get(), lut.get(), args, true, &error, &milliseconds))
            return -1.0;
        best = std::min(best, milliseconds);
    }
    return best * 1e6 / args.width / args.height;
}

double cpuTime(const tw::Lut3D& lut, std::vector<float> pixels, const Shape& shape) {
    const tw::ImageF view{pixels.data(), shape.width, shape.height, shape.width * std::int64_t{16},
                          tw::kOrderBGRA};
    double best = 1e300;
    for (int i = 0; i < 4; ++i) {
        const double begin = now();
        tw::applyF(lut, view, view, 0.5f);
        best = std::min(best, now() - begin);
    }
    return best * 1e6 / shape.width / shape.height;
}

void printTimes(const Device& device, double compileMs) {
    const tw::Lut3D lut = twtest::scatteredLut(65, 1);
    const double begin = now();
    const Handle samples = device.buffer(lut.data.data(), lut.data.size() * sizeof(float));
    const double uploadMs = now() - begin;
    std::printf(
        "\n## Times\n\n| | |\n|---|---|\n| kernel compiled | %.1f ms |\n"
        "| LUT of 65 points uploaded | %.2f ms |\n",
        compileMs, uploadMs);
    for (const bool half : {false, true}) {
        const Shape shape{3840, 2160, 3840, half};
        const Picture source = twtest::pictureOf(twtest::noise(lut, 4096), shape);
        const double spent =
            gpuTime(device, source, samples, twtest::argumentsFor(lut, 0.5f, shape, shape));
        std::printf("| GPU, %s, 3840 x 2160 | %.3f ns a pixel |\n", half ? "16f" : "32f", spent);
    }
    const std::vector<float> pixels(std::size_t{3840} * 2160 * 4, 0.4f);
    std::printf("| CPU, 32f, all processors | %.3f ns a pixel |\n",
                cpuTime(lut, pixels, {3840, 2160, 3840, false}));
}

}  // namespace

int main(int count, char** arguments) {
    int points = 256;
    bool times = false;
    for (int i = 1; i < count; ++i) {
        if (std::strcmp(arguments[i], "--times") == 0) {
            times = true;
        } else if (std::strcmp(arguments[i], "--points") == 0 && i + 1 < count) {
            points = std::atoi(arguments[++i]);
        } else {
            std::fputs("usage: metal_report [--points N] [--times]\n", stderr);
            return 2;
        }
    }
    const double begin = now();
    const Device device;
    const double compileMs = now() - begin;
    if (!device.device || !device.pipeline) {
        std::string error = "no Metal device";
        if (device.device) twmetal::CreatePipeline(device.device.get(), &error);
        std::fprintf(stderr, "metal_report: %s\n", error.c_str());
        return 1;
    }
    std::printf("# The kernel on %s\n", twmetal::DeviceName(device.device.get()).c_str());
    printContraction();
    const bool good = printPictures(device, points);
    if (times) printTimes(device, compileMs);
    return good ? 0 : 1;
}
