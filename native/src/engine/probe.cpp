#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "native/src/engine/parallel_rows.h"
#include "native/src/engine/pixel.h"
#include "native/src/lut_engine.h"

namespace tw {
namespace {

std::int64_t patchCount(std::int64_t n) {
    return n * n * n;
}

// Which of `cells` equal parts of `extent` pixels holds pixel `at`.
std::int64_t cellOf(std::int64_t at, std::int64_t cells, std::int64_t extent) {
    return extent == 0 ? 0 : at * cells / extent;
}

// One cell of the pattern's grid: the lattice point whose colour it shows, or, past the last one,
// blue n, which is black.
class Patch {
public:
    Patch(int n, std::int64_t index) : n_(n), blue_(n) {
        if (index >= patchCount(n_)) return;
        red_ = index % n_;
        green_ = index / n_ % n_;
        blue_ = index / (n_ * n_);
    }

    void next() {
        if (++red_ < n_) return;
        red_ = 0;
        if (++green_ < n_) return;
        green_ = 0;
        ++blue_;
    }

    void colour(float* out) const {
        const float k = blue_ < n_ ? 1.0f / static_cast<float>(n_ - 1) : 0.0f;
        out[0] = k * static_cast<float>(red_);
        out[1] = k * static_cast<float>(green_);
        out[2] = k * static_cast<float>(blue_);
    }

private:
    std::int64_t n_;
    std::int64_t red_ = 0;
    std::int64_t green_ = 0;
    std::int64_t blue_;
};

// Fills `width` pixels that show the patches first .. first + cols - 1: all that cellOf gives,
// without a division a pixel. paint(pixel, colour) writes a colour into a pixel.
template <typename Channel, typename Paint>
void fillRow(int n, std::int64_t first, int cols, Channel* pixel, int width, Paint paint) {
    Channel value[4] = {};
    const auto take = [&](const Patch& patch) {
        float colour[3];
        patch.colour(colour);
        paint(value, colour);
    };
    const std::int64_t step = cols / width;
    const std::int64_t rest = cols % width;
    std::int64_t cell = 0;
    std::int64_t remainder = 0;
    Patch patch(n, first);
    take(patch);
    for (int x = 0; x < width; ++x, pixel += 4) {
        std::memcpy(pixel, value, sizeof value);
        remainder += rest;
        const bool carried = remainder >= width;
        if (carried) remainder -= width;
        const std::int64_t ahead = step + (carried ? 1 : 0);
        if (ahead == 0) continue;
        cell += ahead;
        if (ahead == 1) {
            patch.next();
        } else {
            patch = Patch(n, first + cell);
        }
        take(patch);
    }
}

// Rows of one row of patches are alike: one of them is filled, the others are copied.
template <typename Image, typename Paint>
void fillProbe(int n, const Image& image, Paint paint) {
    if (image.width <= 0) return;
    int cols = 0;
    int rows = 0;
    probeGrid(n, image.width, image.height, &cols, &rows);
    const std::size_t rowBytes = sizeof *image.pixels * 4 * static_cast<std::size_t>(image.width);
    parallelRows(image.height, [&](int firstRow, int endRow) {
        std::int64_t filled = -1;
        for (int y = firstRow; y < endRow; ++y) {
            const std::int64_t patchRow = cellOf(y, rows, image.height);
            if (patchRow == filled) {
                std::memcpy(rowOf(image, y), rowOf(image, y - 1), rowBytes);
            } else {
                fillRow(n, patchRow * cols, cols, rowOf(image, y), image.width, paint);
            }
            filled = patchRow;
        }
    });
}

}  // namespace

void probeGrid(int n, int width, int height, int* cols, int* rows) {
    const std::int64_t patches = patchCount(n);
    const double aspect = height < 1 ? 1.0 : static_cast<double>(width) / height;
    const double ideal = std::ceil(std::sqrt(aspect * static_cast<double>(patches)));
    // Converted only within the range of int; a negative width makes the root NaN.
    const double atMost = INT_MAX;
    *cols = ideal >= 1.0 ? static_cast<int>(std::min(ideal, atMost)) : 1;
    *rows = static_cast<int>((patches + *cols - 1) / *cols);
}

void probeColour(int n, int cols, int rows, int width, int height, int x, int y, float* out) {
    const std::int64_t index = cellOf(x, cols, width) + cellOf(y, rows, height) * cols;
    Patch(n, index).colour(out);
}

void fillProbe8(int n, const Image8& image) {
    const ChannelMap to = channelMap(image.order);
    fillProbe(n, image, [&to](std::uint8_t* pixel, const float(&colour)[3]) {
        pixel[to.r] = quantise8(colour[0]);
        pixel[to.g] = quantise8(colour[1]);
        pixel[to.b] = quantise8(colour[2]);
        pixel[to.a] = 255;
    });
}

void fillProbeF(int n, const ImageF& image) {
    const ChannelMap to = channelMap(image.order);
    fillProbe(n, image, [&to](float* pixel, const float(&colour)[3]) {
        pixel[to.r] = colour[0];
        pixel[to.g] = colour[1];
        pixel[to.b] = colour[2];
        pixel[to.a] = 1.0f;
    });
}

}  // namespace tw
