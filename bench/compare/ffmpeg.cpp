#include <sys/resource.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "bench/compare/contestants.h"

namespace bench {
namespace {

// So many 1080p frames' worth of pixels are graded for a run.
constexpr int kFrames = 12;

double childSeconds() {
    rusage usage;
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Processor time of ffmpeg over so many frames through `filter`.
double secondsOf(int frames, const std::string& input, const std::string& filter) {
    const std::string command =
        "ffmpeg -nostdin -v error -threads 1 -filter_threads 1 -stream_loop " +
        std::to_string(frames - 1) + " " + input + " -vf " + filter + " -f null -";
    const double start = childSeconds();
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
    return childSeconds() - start;
}

// Processor time of one frame more, without the start of the program and the reading of the LUT.
double secondsPerFrame(int frames, const std::string& input, const std::string& filter) {
    return (secondsOf(frames + 1, input, filter) - secondsOf(1, input, filter)) / frames;
}

void writeFile(const std::string& path, const void* data, std::size_t bytes) {
    if (std::FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(data, 1, bytes, file);
        std::fclose(file);
    }
}

// The colours of a frame of packed floats as planes: green, blue, red, as the filter wants them.
std::vector<float> planesOf(const tw::ImageF& image) {
    const auto pixels =
        static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    std::vector<float> planes;
    planes.reserve(3 * pixels);
    for (const std::size_t channel : {1u, 0u, 2u}) {
        for (std::size_t i = 0; i < pixels; ++i)
            planes.push_back(image.pixels[4 * i + channel]);
    }
    return planes;
}

Contestant grading(const std::string& cubePath, int frames, const std::string& input) {
    return {"FFmpeg lut3d", [cubePath, frames, input] {
                const std::string filter = "'lut3d=file=" + cubePath + ":interp=tetrahedral'";
                return secondsPerFrame(frames, input, filter) -
                       secondsPerFrame(frames, input, "null");
            }};
}

}  // namespace

void addFfmpeg(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes) {
    const tw::ImageF& image = contest.floatSrc.image;
    if (image.height == 1 || std::system("ffmpeg -version >/dev/null 2>&1") != 0) return;
    const int frames = std::max(1, kFrames * 1920 * 1080 / (image.width * image.height));
    const std::string size = std::to_string(contest.floatSrc.image.width) + "x" +
                             std::to_string(contest.floatSrc.image.height);
    const auto input = [&size](const std::string& format, const std::string& path) {
        return "-f rawvideo -pix_fmt " + format + " -s " + size + " -i '" + path + "'";
    };
    const std::vector<float> planes = planesOf(contest.floatSrc.image);
    const std::string floatPath = contest.cubePath + ".gbrpf32";
    const std::string bytePath = contest.cubePath + ".bgra";
    writeFile(floatPath, planes.data(), planes.size() * sizeof(float));
    writeFile(bytePath, contest.byteSrc.image.pixels, contest.byteSrc.bytes());
    floats.push_back(grading(contest.cubePath, frames, input("gbrpf32le", floatPath)));
    bytes.push_back(grading(contest.cubePath, frames, input("bgra", bytePath)));
}

}  // namespace bench
