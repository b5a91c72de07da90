#include "looks/pattern/cells.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "native/src/lut_engine.h"

namespace looks {
namespace {

// The mean of the middle half of sorted values, so that what lies over a part of the patch does not
// count. Equal values give just that value.
float middleOf(const std::vector<float>& sorted) {
    const std::size_t cut = sorted.size() / 4;
    double sum = 0.0;
    for (std::size_t i = cut; i < sorted.size() - cut; ++i)
        sum += static_cast<double>(sorted[i]);
    return static_cast<float>(sum / static_cast<double>(sorted.size() - 2 * cut));
}

float deviationOf(const std::vector<float>& values) {
    double sum = 0.0;
    for (const float value : values)
        sum += static_cast<double>(value);
    const double mean = sum / static_cast<double>(values.size());
    double squares = 0.0;
    for (const float value : values) {
        const double off = static_cast<double>(value) - mean;
        squares += off * off;
    }
    return static_cast<float>(std::sqrt(squares / static_cast<double>(values.size())));
}

}  // namespace

Grid gridOf(int size, int width, int height) {
    Grid grid;
    grid.size = size;
    tw::probeGrid(size, width, height, &grid.columns, &grid.rows);
    return grid;
}

// The engine puts pixel x into cell x * cells / extent, rounded down.
Span spanOf(int cell, int cells, int extent) {
    const auto firstOf = [cells, extent](std::int64_t index) {
        return static_cast<int>((index * extent + cells - 1) / cells);
    };
    return {firstOf(cell), firstOf(cell + 1)};
}

Span insideOf(const Span& patch) {
    const int edge = std::max(2, patch.length() / 4);
    return {patch.begin + edge, patch.end - edge};
}

int leastPatchSide(int cells, int extent) {
    return extent / cells;
}

Span CellReader::columnOf(std::size_t index) const {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    return spanOf(static_cast<int>(index % columns), grid_.columns, picture_.width);
}

Span CellReader::rowOf(std::size_t index) const {
    const auto columns = static_cast<std::size_t>(grid_.columns);
    return spanOf(static_cast<int>(index / columns), grid_.rows, picture_.height);
}

Cell CellReader::read(std::size_t index) {
    columns_ = insideOf(columnOf(index));
    rows_ = insideOf(rowOf(index));
    Cell cell;
    for (std::size_t channel = 0; channel < 3; ++channel)
        readChannel(channel, cell);
    return cell;
}

void CellReader::readChannel(std::size_t channel, Cell& cell) {
    values_.clear();
    for (int y = rows_.begin; y < rows_.end; ++y) {
        for (int x = columns_.begin; x < columns_.end; ++x)
            values_.push_back(pixelOf(picture_, x, y)[channel]);
    }
    const float noise = deviationOf(values_);
    // Kept once it is not a number: such values cannot be sorted.
    if (!std::isfinite(noise) || !std::isfinite(cell.noise)) {
        cell.noise = std::nanf("");
        return;
    }
    cell.noise = std::max(cell.noise, noise);
    std::sort(values_.begin(), values_.end());
    cell.middle[channel] = middleOf(values_);
}

std::vector<Cell> readCells(const Picture& picture, const Grid& grid) {
    CellReader reader(picture, grid);
    std::vector<Cell> cells(grid.cells());
    for (std::size_t index = 0; index < cells.size(); ++index)
        cells[index] = reader.read(index);
    return cells;
}

}  // namespace looks
