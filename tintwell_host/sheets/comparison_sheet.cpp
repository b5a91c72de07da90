#include <algorithm>
#include <array>

#include "looks/comparison.h"
#include "looks/words.h"
#include "tintwell_host/sheets/colour_difference.h"
#include "tintwell_host/sheets/curve_plot.h"
#include "tintwell_host/sheets/sheet.h"
#include "tintwell_host/sheets/sheet_parts.h"
#include "tintwell_host/sheets/sheet_pictures.h"
#include "tintwell_host/sheets/sheet_style.h"

namespace program {
namespace {

constexpr double kHeight = 1470.0;
// From dark blue over grey to yellow: the lightness rises all the way, and colour-blind people see
// the same order.
constexpr std::array<std::array<float, 3>, 5> kScale = {{{0.03f, 0.10f, 0.25f},
                                                         {0.22f, 0.28f, 0.46f},
                                                         {0.46f, 0.46f, 0.47f},
                                                         {0.73f, 0.66f, 0.42f},
                                                         {1.00f, 0.91f, 0.27f}}};

float scaleAt(float share, std::size_t k) {
    const float at = std::clamp(share, 0.0f, 1.0f) * (kScale.size() - 1);
    const auto low = std::min(static_cast<std::size_t>(at), kScale.size() - 2);
    const float part = at - static_cast<float>(low);
    return kScale[low][k] + (kScale[low + 1][k] - kScale[low][k]) * part;
}

std::vector<float> coloursOf(const Picture& picture) {
    std::vector<float> colours;
    for (std::size_t at = 0; at < picture.floats.size(); at += 4)
        colours.insert(colours.end(), picture.floats.begin() + static_cast<std::ptrdiff_t>(at),
                       picture.floats.begin() + static_cast<std::ptrdiff_t>(at + 3));
    return colours;
}

// What the map's last colour stands for: a round number that all but a few pixels stay below.
float topOf(const Difference& difference) {
    std::vector<float> sorted = difference.deltas;
    const auto most = sorted.begin() + static_cast<std::ptrdiff_t>(sorted.size() * 98 / 100);
    std::ranges::nth_element(sorted, most);
    for (const float top : {1.0f, 2.0f, 5.0f, 10.0f, 20.0f, 30.0f, 40.0f, 60.0f}) {
        if (*most <= top) return top;
    }
    return 100.0f;
}

Picture mapOf(const Picture& picture, const Difference& difference, float top) {
    Picture map = picture;
    for (std::size_t i = 0; i < difference.deltas.size(); ++i) {
        for (std::size_t k = 0; k < 3; ++k)
            map.floats[i * 4 + k] = scaleAt(difference.deltas[i] / top, k);
    }
    return map;
}

void drawScale(Canvas& canvas, Point at, float top) {
    constexpr double kStep = 4.0;
    for (int i = 0; i < 60; ++i) {
        Paint paint = 0;
        for (std::size_t k = 0; k < 3; ++k)
            paint =
                paint << 8 | static_cast<Paint>(scaleAt(static_cast<float>(i) / 59.0f, k) * 255.0f);
        canvas.fill({at.x + i * kStep, at.y - 11, kStep + 0.5, 12}, paint);
    }
    canvas.text({at.x + 248, at.y}, "CIEDE2000 from 0 to " + looks::spell(top) + " and more",
                style::kCaption);
}

std::string spelt(double value) {
    return looks::spell(static_cast<float>(value));
}

void drawNumbers(Canvas& canvas, const Box& box, const Difference& lattice,
                 const Difference& picture) {
    canvas.text({box.x, box.y - 10}, "Difference", style::kStrongCaption);
    const double columns[3] = {box.x, box.x + 300, box.x + 480};
    double line = box.y + 22;
    canvas.text({columns[1], line}, "all colours", style::kCaption);
    canvas.text({columns[2], line}, "this picture", style::kCaption);
    const struct {
        const char* what;
        double all;
        double shown;
    } rows[] = {{"largest, steps of 8 bits", lattice.steps.largest, picture.steps.largest},
                {"mean, steps of 8 bits", lattice.steps.mean, picture.steps.mean},
                {"largest, CIEDE2000", lattice.largestDelta, picture.largestDelta},
                {"mean, CIEDE2000", lattice.meanDelta, picture.meanDelta}};
    constexpr TextStyle kNumber{30.0, style::kText, true};
    for (const auto& row : rows) {
        line += 48;
        canvas.text({columns[0], line}, row.what, style::kBody);
        canvas.text({columns[1], line}, spelt(row.all), kNumber);
        canvas.text({columns[2], line}, spelt(row.shown), kNumber);
    }
    canvas.wrapped({box.x, line + 44},
                   "A CIEDE2000 of 1 is just visible side by side. The values are taken for sRGB.",
                   style::kSmall, box.width);
}

}  // namespace

std::string comparisonSheet(const looks::Check& one, const looks::Check& other,
                            const Picture& picture) {
    const Picture before = fitted(picture, 736, 414);
    const Picture first = graded(before, one.lut, 1.0f);
    const Picture second = graded(before, other.lut, 1.0f);
    const Difference seen = differenceOf(coloursOf(first), coloursOf(second));
    const Difference lattice =
        differenceOf(looks::comparedColours(one.lut), looks::comparedColours(other.lut));
    const float top = topOf(seen);
    Canvas canvas(kSheetWidth, kHeight, style::kBackground);
    const std::string title = nameOf(one.lut) + "  and  " + nameOf(other.lut);
    drawHead(canvas, title, describe(one) + "      and      " + describe(other));
    drawPair(canvas, 160, {nameOf(one.lut), first}, {nameOf(other.lut), second});
    drawPair(canvas, 630, {"Before", before}, {"Where they differ", mapOf(before, seen, top)});
    drawScale(canvas, {kSheetWidth - kMargin - 736, 1066}, top);
    constexpr double kThird = 1130.0;
    canvas.text(
        {kMargin, kThird - 30},
        "Greys, from black to white: " + nameOf(one.lut) + ", and " + nameOf(other.lut) + " dashed",
        style::kStrongCaption);
    drawCurves(canvas, {kMargin, kThird - 16, 736, 320}, {&one.lut, &other.lut});
    drawNumbers(canvas, {kSheetWidth - kMargin - 736, kThird - 4, 736, 300}, lattice, seen);
    return canvas.finish(title, "The largest difference is " + spelt(lattice.steps.largest) +
                                    " steps of 8 bits, the mean " + spelt(lattice.steps.mean) +
                                    "; in CIEDE2000 " + spelt(lattice.largestDelta) + " and " +
                                    spelt(lattice.meanDelta) + ".");
}

}  // namespace program
