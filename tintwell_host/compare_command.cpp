#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/picture.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

struct Difference {
    std::size_t unequal = 0;
    std::size_t first = 0;  // index of the first unequal value
    double largest = 0.0;   // infinite where one side alone is not a number or infinite
};

bool same(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

Difference difference(const std::vector<float>& a, const std::vector<float>& b) {
    Difference found;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (same(a[i], b[i])) continue;
        if (found.unequal++ == 0) found.first = i;
        const double distance = std::abs(static_cast<double>(a[i]) - static_cast<double>(b[i]));
        found.largest = std::isfinite(distance) ? std::max(found.largest, distance)
                                                : std::numeric_limits<double>::infinity();
    }
    return found;
}

std::string sizeOf(const Picture& picture) {
    return std::to_string(picture.width) + "x" + std::to_string(picture.height);
}

void tell(const Difference& found, const Picture& a, const Picture& b) {
    if (found.unequal == 0) {
        std::printf("all %zu values are the same\n", a.floats.size());
        return;
    }
    static constexpr const char* kChannels[] = {"red", "green", "blue", "alpha"};
    const std::size_t pixel = found.first / 4;
    const auto width = static_cast<std::size_t>(a.width);
    std::printf("%zu of %zu values differ, by at most %.9g\n", found.unequal, a.floats.size(),
                found.largest);
    std::printf("first at column %zu, row %zu, %s: %.9g and %.9g\n", pixel % width, pixel / width,
                kChannels[found.first % 4], static_cast<double>(a.floats[found.first]),
                static_cast<double>(b.floats[found.first]));
}

}  // namespace

void runCompare(const std::string& fileA, const std::string& fileB, double within) {
    const Picture a = readPicture(fileA, Depth::kFloat);
    const Picture b = readPicture(fileB, Depth::kFloat);
    if (a.width != b.width || a.height != b.height) {
        throw Failure("cannot compare '" + fileA + "' with '" + fileB + "': one has " + sizeOf(a) +
                      " pixels, the other " + sizeOf(b));
    }
    const Difference found = difference(a.floats, b.floats);
    tell(found, a, b);
    if (found.largest > within) throw Failure("'" + fileA + "' and '" + fileB + "' differ");
}

}  // namespace program
