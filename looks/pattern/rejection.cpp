#include "looks/pattern/rejection.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>

#include "looks/measure.h"
#include "looks/pattern/bars.h"
#include "looks/pattern/order.h"
#include "native/src/lut_text.h"

namespace looks {
namespace {

constexpr float kStep = 1.0f / 255.0f;

// Patches at random come to 1, looks of nothing but jumps to a quarter, a photograph to a half.
constexpr double kRough = 0.4;

std::string sizeText(int width, int height) {
    return std::to_string(width) + "x" + std::to_string(height);
}

bool patchesAreBigEnough(const Grid& grid, int width, int height) {
    return leastPatchSide(grid.columns, width) >= kLeastPatchSide &&
           leastPatchSide(grid.rows, height) >= kLeastPatchSide;
}

// The smallest frame of the picture's shape in which the patches are big enough; nothing when there
// is none of a size that can be written.
std::string leastFrame(const Picture& picture, int size) {
    for (std::int64_t height = picture.height;; ++height) {
        const std::int64_t width = height * picture.width / picture.height;
        if (width > INT_MAX || height > INT_MAX) return "";
        const int w = static_cast<int>(width);
        const int h = static_cast<int>(height);
        if (patchesAreBigEnough(gridOf(size, w, h), w, h)) return sizeText(w, h);
    }
}

// Stops at the first patch that is not flat, which for a wrong size is soon.
std::vector<Cell> cellsIfFlat(const Picture& picture, const Grid& grid, float limit) {
    std::vector<Cell> cells;
    if (!patchesAreBigEnough(grid, picture.width, picture.height)) return cells;
    CellReader reader(picture, grid);
    for (std::size_t index = 0; index < grid.cells(); ++index) {
        cells.push_back(reader.read(index));
        if (!isFlat(cells.back(), limit)) return {};
    }
    return cells;
}

// The size of the pattern that the picture does show; 0 for none. By chance the cells of another
// size may all lie inside patches, but their order is then rougher.
int shownSize(const Picture& picture, float limit) {
    int shown = 0;
    double least = kRough;
    for (int size = 3; size <= tw::kMostPatternSteps; ++size) {
        const Grid grid = gridOf(size, picture.width, picture.height);
        const std::vector<Cell> cells = cellsIfFlat(picture, grid, limit);
        if (cells.empty()) continue;
        const double rough = roughness(cells, grid);
        if (rough >= least) continue;
        least = rough;
        shown = size;
    }
    return shown;
}

std::string placeOf(const Picture& picture, const Grid& grid, std::size_t index) {
    const CellReader reader(picture, grid);
    return std::to_string(reader.columnOf(index).begin) + "," +
           std::to_string(reader.rowOf(index).begin);
}

// The first leftover cell that does not look like the first patch; the number of cells for none.
std::size_t firstOddLeftover(const Grid& grid, const std::vector<Cell>& cells, float limit) {
    std::size_t index = grid.patches();
    const auto isBlack = [&](const Cell& cell) {
        for (int channel = 0; channel < 3; ++channel) {
            if (std::fabs(cell.middle[channel] - cells[0].middle[channel]) > limit) return false;
        }
        return true;
    };
    while (index < cells.size() && isBlack(cells[index]))
        ++index;
    return index;
}

// With fewer steps too little is smooth for telling.
bool tellsOrder(const Grid& grid) {
    return grid.size >= 4;
}

// A mirrored picture is smooth once it is mirrored back.
std::string whyMirrored(const Grid& grid, const std::vector<Cell>& cells) {
    struct Way {
        Mirrored mirrored;
        const char* told;
    };
    constexpr Way kWays[] = {{{true, false}, "the picture is mirrored left to right"},
                             {{false, true}, "the picture is mirrored top to bottom"},
                             {{true, true}, "the picture is turned by half a turn"}};
    const char* told = "";
    double best = 0.5 * roughness(cells, grid);
    for (const Way& way : kWays) {
        const double rough = roughness(cells, grid, way.mirrored);
        if (rough >= best) continue;
        best = rough;
        told = way.told;
    }
    return told;
}

}  // namespace

float contrastOf(const Picture& picture) {
    if (picture.width < 1 || picture.height < 1) return 0.0f;
    const auto pixels =
        static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height);
    const std::size_t step = std::max<std::size_t>(1, pixels / 65536);
    std::vector<float> values;
    for (std::size_t pixel = 0; pixel < pixels; pixel += step) {
        for (std::size_t channel = 0; channel < 3; ++channel) {
            const float value = picture.rgba[pixel * 4 + channel];
            if (std::isfinite(value)) values.push_back(value);
        }
    }
    if (values.empty()) return 0.0f;
    std::sort(values.begin(), values.end());
    const std::size_t cut = values.size() / 100;
    return values[values.size() - 1 - cut] - values[cut];
}

float flatnessLimit(float contrast) {
    return 0.08f * contrast + kStep;
}

bool isFlat(const Cell& cell, float limit) {
    return cell.noise <= limit;
}

std::string whyNoPicture(const Picture& picture, float contrast) {
    if (picture.width < 1 || picture.height < 1) return "it is empty";
    if (contrast < 8.0f * kStep) {
        return "it is of one colour, or nearly so: that is no calibration pattern";
    }
    return "";
}

std::string whyTooSmall(const Picture& picture, const Grid& grid) {
    if (patchesAreBigEnough(grid, picture.width, picture.height)) return "";
    const std::string needed = leastFrame(picture, grid.size);
    return "its patches would be " +
           sizeText(leastPatchSide(grid.columns, picture.width),
                    leastPatchSide(grid.rows, picture.height)) +
           " pixels, and must be " + sizeText(kLeastPatchSide, kLeastPatchSide) + " or more" +
           (needed.empty() ? ""
                           : ": a pattern of " + std::to_string(grid.size) +
                                 " steps needs a frame of " + needed + " or more");
}

std::string whyNotFlat(const Picture& picture, const Grid& grid, const std::vector<Cell>& cells,
                       float limit) {
    std::size_t first = cells.size();
    std::size_t count = 0;
    for (std::size_t index = 0; index < cells.size(); ++index) {
        if (isFlat(cells[index], limit)) continue;
        if (count++ == 0) first = index;
        if (std::isnan(cells[index].noise)) {
            return "the patch at " + placeOf(picture, grid, index) +
                   " holds values that are no numbers";
        }
    }
    if (count == 0) return "";
    if (const std::string bars = whyBarred(picture); !bars.empty()) return bars;
    const std::string size = std::to_string(grid.size);
    const int shown = shownSize(picture, limit);
    if (shown == grid.size) return "the pattern was not drawn in a frame of that shape";
    if (shown != 0) {
        return "it shows a pattern of " + std::to_string(shown) + " steps, not of " + size;
    }
    if (tellsOrder(grid) && count * 10 < cells.size() && roughness(cells, grid) < kRough) {
        return std::to_string(count) + " of its " + std::to_string(cells.size()) +
               " patches vary too much, the first at " + placeOf(picture, grid, first) +
               ": something lies over the pattern, or it is compressed too much";
    }
    return "its patches are not where those of a pattern of " + size +
           " steps are: it is none, or cropped, turned, or scaled to another shape";
}

std::string whyDisordered(const Picture& picture, const Grid& grid, const std::vector<Cell>& cells,
                          float limit) {
    if (tellsOrder(grid)) {
        if (const std::string why = whyMirrored(grid, cells); !why.empty()) return why;
        if (roughness(cells, grid) > kRough)
            return "its patches are in disorder: neighbours have nothing in common";
    }
    const std::size_t odd = firstOddLeftover(grid, cells, limit);
    if (odd == cells.size()) return "";
    return "the cell at " + placeOf(picture, grid, odd) +
           ", after the last patch, is black in the pattern like the first patch, and differs "
           "from it here: the patches are in another order, or the grade is not the same "
           "everywhere";
}

}  // namespace looks
