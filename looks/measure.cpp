#include "looks/measure.h"

#include <algorithm>

#include "looks/pattern/cells.h"
#include "looks/pattern/rejection.h"

namespace looks {
namespace {

bool sameGrid(const Grid& a, const Grid& b) {
    return a.columns == b.columns && a.rows == b.rows;
}

// The grids that the pattern can have. A picture that was scaled to whole pixels, or to even ones,
// is of nearly the same shape as its frame, and that can make a column more or less.
std::vector<Grid> possibleGrids(const Picture& picture, const PatternFrame& frame) {
    if (frame.width > 0) return {gridOf(frame.size, frame.width, frame.height)};
    std::vector<Grid> grids = {gridOf(frame.size, picture.width, picture.height)};
    for (const int wider : {-1, 0, 1}) {
        for (const int higher : {-1, 0, 1}) {
            const Grid grid = gridOf(frame.size, picture.width + wider, picture.height + higher);
            const auto isGrid = [&grid](const Grid& known) { return sameGrid(known, grid); };
            if (std::none_of(grids.begin(), grids.end(), isGrid)) grids.push_back(grid);
        }
    }
    return grids;
}

bool allFlat(const std::vector<Cell>& cells, float limit) {
    return std::all_of(cells.begin(), cells.end(),
                       [limit](const Cell& cell) { return isFlat(cell, limit); });
}

// The reason is that of the first grid, the picture's own.
bool readFlatCells(const Picture& picture, const std::vector<Grid>& grids, float limit, Grid& grid,
                   std::vector<Cell>& cells, std::string& reason) {
    reason = whyTooSmall(picture, grids.front());
    if (!reason.empty()) return false;
    for (const Grid& candidate : grids) {
        if (!whyTooSmall(picture, candidate).empty()) continue;
        grid = candidate;
        cells = readCells(picture, grid);
        if (allFlat(cells, limit)) return true;
    }
    reason = whyNotFlat(picture, grids.front(), readCells(picture, grids.front()), limit);
    return false;
}

Measurement measurementOf(const Picture& picture, const Grid& grid,
                          const std::vector<Cell>& cells) {
    Measurement measurement;
    measurement.lut.size = grid.size;
    measurement.columns = grid.columns;
    measurement.rows = grid.rows;
    measurement.patchWidth = leastPatchSide(grid.columns, picture.width);
    measurement.patchHeight = leastPatchSide(grid.rows, picture.height);
    measurement.pixelsRead = insideOf({0, measurement.patchWidth}).length() *
                             insideOf({0, measurement.patchHeight}).length();
    for (std::size_t index = 0; index < grid.patches(); ++index) {
        const Cell& cell = cells[index];
        measurement.lut.data.insert(measurement.lut.data.end(), cell.middle, cell.middle + 3);
        measurement.noise.push_back(cell.noise);
    }
    return measurement;
}

}  // namespace

bool measurePattern(const Picture& picture, const PatternFrame& frame, Measurement& measurement,
                    std::string& reason) {
    const float contrast = contrastOf(picture);
    reason = whyNoPicture(picture, contrast);
    if (!reason.empty()) return false;
    const float limit = flatnessLimit(contrast);
    Grid grid;
    std::vector<Cell> cells;
    if (!readFlatCells(picture, possibleGrids(picture, frame), limit, grid, cells, reason)) {
        return false;
    }
    reason = whyDisordered(picture, grid, cells, limit);
    if (!reason.empty()) return false;
    measurement = measurementOf(picture, grid, cells);
    return true;
}

}  // namespace looks
