#include <algorithm>
#include <climits>
#include <cmath>

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

// Calls put(pixel, colour) for every pixel of the image.
template <typename Image, typename Put>
void fillProbe(int n, const Image& image, Put put) {
    int cols = 0;
    int rows = 0;
    probeGrid(n, image.width, image.height, &cols, &rows);
    parallelRows(image.height, [&](int firstRow, int endRow) {
        for (int y = firstRow; y < endRow; ++y) {
            auto* pixel = rowOf(image, y);
            for (int x = 0; x < image.width; ++x, pixel += 4) {
                float colour[3];
                probeColour(n, cols, rows, image.width, image.height, x, y, colour);
                put(pixel, colour);
            }
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
    if (index >= patchCount(n)) {
        out[0] = out[1] = out[2] = 0.0f;
        return;
    }
    const std::int64_t steps = n;
    const float k = 1.0f / static_cast<float>(steps - 1);
    out[0] = k * static_cast<float>(index % steps);
    out[1] = k * static_cast<float>(index / steps % steps);
    out[2] = k * static_cast<float>(index / (steps * steps));
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
