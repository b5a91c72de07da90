// Grades pictures with every row kernel of ours and with the programs that a user could take
// instead, all in one run and turn by turn, and prints their times and ratios as CSV:
// tintwell_compare [WORK... [POINTS... [COLOURS...]]]
// WORK: row (1920 pixels that stay in the cache), 1080p, 4K; POINTS: of the LUT's axes; COLOURS:
// photograph, random, waves. Every combination of what is named is a cell; where none of a kind is
// named: row and 4K, 33 and 65, photograph and random.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "bench/compare/contestants.h"
#include "bench/photograph.h"

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

// Columns: the cell, depth, name, median ns a pixel, quickest, slowest, then how many times as long
// as memcpy, as the scalar kernel, and as our quickest kernel it takes.
void race(const std::string& cell, const std::vector<bench::Contestant>& all, double pixels) {
    std::vector<std::vector<double>> times(all.size());
    for (int round = 0; round <= kRounds; ++round) {
        for (std::size_t i = 0; i < all.size(); ++i) {
            const double seconds = all[i].run();
            // The first round warms up.
            if (round > 0) times[i].push_back(seconds);
        }
    }
    std::size_t best = 1;
    for (std::size_t i = 1; i < all.size(); ++i) {
        if (all[i].name.starts_with("tintwell") && median(times[i]) < median(times[best])) best = i;
    }
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto [least, most] = std::minmax_element(times[i].begin(), times[i].end());
        std::printf("%s,%s,%.3f,%.3f,%.3f,%.2f,%.3f,%.2f\n", cell.c_str(), all[i].name.c_str(),
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

struct Work {
    const char* name;
    int width, height, calls;
};

constexpr Work kWorks[] = {{"row", 1920, 1, 200}, {"1080p", 1920, 1080, 1}, {"4K", 3840, 2160, 1}};

struct ColourName {
    const char* name;
    bench::Colours colours;  // where the picture is not the photograph
};

constexpr ColourName kColours[] = {{"photograph", bench::Colours::kWaves},
                                   {"random", bench::Colours::kRandom},
                                   {"waves", bench::Colours::kWaves}};

bool raceCell(const Work& work, int points, const ColourName& colours,
              const std::filesystem::path& folder) {
    const auto [name, width, height, calls] = work;
    bench::Contest contest{calls,
                           bench::randomLut(points),
                           folder / "random.cube",
                           {width, height, colours.colours},
                           {width, height},
                           {width, height, colours.colours},
                           {width, height}};
    if (std::string_view(colours.name) == "photograph" &&
        (!bench::paintPhotograph(contest.floatSrc.image) ||
         !bench::paintPhotograph(contest.byteSrc.image))) {
        std::fprintf(stderr, "compare: no photograph: run scripts/fetch-samples\n");
        return false;
    }
    writeText(contest.cubePath, bench::cubeText(contest.lut));
    std::vector<bench::Contestant> floats, bytes;
    bench::addOurs(contest, floats, bytes);
    bench::addOpenColorIO(contest, floats, bytes);
    bench::addFfmpeg(contest, floats, bytes);
    const std::string cell =
        std::string(name) + "," + std::to_string(points) + "," + colours.name + ",";
    race(cell + "float", floats, double{1} * width * height);
    race(cell + "8 bits", bytes, double{1} * width * height);
    return true;
}

// What the arguments ask for.
struct Cells {
    std::vector<Work> works;
    std::vector<int> points;
    std::vector<ColourName> colours;

    // False for a word that names nothing.
    bool take(const std::string& word) {
        for (const Work& work : kWorks) {
            if (word == work.name) return works.push_back(work), true;
        }
        for (const ColourName& one : kColours) {
            if (word == one.name) return colours.push_back(one), true;
        }
        const int count = std::atoi(word.c_str());
        if (count < 2 || count > 129 || std::to_string(count) != word) return false;
        points.push_back(count);
        return true;
    }

    void fill() {
        if (works.empty()) works = {kWorks[0], kWorks[2]};
        if (points.empty()) points = {33, 65};
        if (colours.empty()) colours = {kColours[0], kColours[1]};
    }
};

// False, after a sentence, where something that is needed is not there.
bool raceAll(const Cells& cells, const std::filesystem::path& folder) try {
    std::printf(
        "work,points,colours,depth,name,ns/pixel,least,most,by memcpy,by scalar,"
        "by our best\n");
    for (const Work& work : cells.works) {
        for (const int points : cells.points) {
            for (const ColourName& colours : cells.colours) {
                if (!raceCell(work, points, colours, folder)) return false;
            }
        }
    }
    return true;
} catch (const std::exception& error) {
    std::fprintf(stderr, "compare: %s\n", error.what());
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    Cells cells;
    for (int i = 1; i < argc; ++i) {
        if (cells.take(argv[i])) continue;
        std::fprintf(stderr, "compare: no picture, LUT size or kind of colours: '%s'\n", argv[i]);
        return 2;
    }
    cells.fill();
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("compare-" + std::to_string(getpid()));
    std::filesystem::create_directory(folder);
    const bool ok = raceAll(cells, folder);
    std::filesystem::remove_all(folder);
    return ok ? 0 : 1;
}
