#include "looks/pattern/bars.h"

#include <cmath>

namespace looks {
namespace {

// What compression may change in a bar.
constexpr float kTolerance = 8.0f / 255.0f;

bool isLike(const float* pixel, const float* other) {
    for (int channel = 0; channel < 3; ++channel) {
        if (!(std::fabs(pixel[channel] - other[channel]) <= kTolerance)) return false;
    }
    return true;
}

// A row (or a column, when `across`) of pixels that all look like the picture's corner `corner`.
bool isBar(const Picture& picture, int at, bool across, const float* corner) {
    const int length = across ? picture.height : picture.width;
    for (int i = 0; i < length; ++i) {
        const float* pixel = across ? pixelOf(picture, at, i) : pixelOf(picture, i, at);
        if (!isLike(pixel, corner)) return false;
    }
    return true;
}

// How many rows or columns the bar from the first one on has, or that from the last one back.
int barLength(const Picture& picture, bool across, bool fromLast) {
    const int extent = across ? picture.width : picture.height;
    const float* corner =
        fromLast ? pixelOf(picture, picture.width - 1, picture.height - 1) : pixelOf(picture, 0, 0);
    int length = 0;
    while (length < extent &&
           isBar(picture, fromLast ? extent - 1 - length : length, across, corner)) {
        ++length;
    }
    return length;
}

std::string barsAlong(const Picture& picture, bool across) {
    const int first = barLength(picture, across, false);
    const int last = barLength(picture, across, true);
    if (first == 0 && last == 0) return "";
    const std::string kind = across ? " columns" : " rows";
    return "it has bars of one colour (" + std::to_string(first) + kind + " at the " +
           (across ? "left" : "top") + ", " + std::to_string(last) + " at the " +
           (across ? "right" : "bottom") + "): give the picture without them";
}

}  // namespace

std::string whyBarred(const Picture& picture) {
    const std::string rows = barsAlong(picture, false);
    return rows.empty() ? barsAlong(picture, true) : rows;
}

}  // namespace looks
