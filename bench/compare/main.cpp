// Grades one frame with every row kernel of ours and with the programs that a user could take
// instead, all in one run and turn by turn, and prints their times and ratios. tintwell_compare
// [WIDTH HEIGHT [POINTS [random]]]; lines of "depth,name,ns a pixel,spread,..."
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "bench/compare/contestants.h"

namespace {

constexpr int kRounds = 9;

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Median over the rounds of the ratio of two contestants within a round.
double ratio(const std::vector<double>& a, const std::vector<double>& b) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < a.size(); ++i)
        ratios.push_back(a[i] / b[i]);
    return median(ratios);
}

// Columns: depth, name, median ns a pixel, quickest, slowest, then how many times as long as
// memcpy, as the scalar kernel, and as our quickest kernel it takes.
void race(const char* depth, const std::vector<bench::Contestant>& all, double pixels) {
    std::vector<std::vector<double>> times(all.size());
    for (int round = 0; round <= kRounds; ++round) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const double seconds = all[i].run();
            // The first round warms up.
            if (round > 0) times[i].push_back(seconds);
        }
    }
    std::size_t best = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].name.starts_with("tintwell")) best = i;
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto [least, most] = std::minmax_element(times[i].begin(), times[i].end());
        std::printf("%s,%s,%.3f,%.3f,%.3f,%.2f,%.3f,%.2f\n", depth, all[i].name.c_str(),
                    median(times[i]) * 1e9 / pixels, *least * 1e9 / pixels, *most * 1e9 / pixels,
                    ratio(times[i], times[0]), ratio(times[i], times[1]),
                    ratio(times[i], times[best]));
        std::fflush(stdout);
    }
}

void writeText(const std::filesystem::path& path, const std::string& text) {
    if (std::FILE* file = std::fopen(path.c_str(), "wb")) {
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int width = argc > 2 ? std::atoi(argv[1]) : 1920;
    const int height = argc > 2 ? std::atoi(argv[2]) : 1080;
    const int points = argc > 3 ? std::atoi(argv[3]) : 33;
    const auto colours = argc > 4 ? bench::Colours::kRandom : bench::Colours::kWaves;
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("compare-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    bench::Contest contest{bench::randomLut(points), folder / "random.cube",
                           {width, height, colours}, {width, height},
                           {width, height, colours}, {width, height}};
    writeText(contest.cubePath, bench::cubeText(contest.lut));

    std::vector<bench::Contestant> floats, bytes;
    bench::addOurs(contest, floats, bytes);
    bench::addOpenColorIO(contest, floats, bytes);
    bench::addFfmpeg(contest, floats, bytes);
    std::printf("depth,name,ns/pixel,least,most,by memcpy,by scalar,by our best\n");
    race("float", floats, double{1} * width * height);
    race("8 bits", bytes, double{1} * width * height);
    std::filesystem::remove_all(folder);
    return 0;
}
