// The cells of a calibration pattern in a picture.
#pragma once

#include <cstddef>
#include <vector>

#include "looks/picture_view.h"

namespace looks {

// As tw::probeGrid gives it.
struct Grid {
    int size = 0;  // steps per channel
    int columns = 0;
    int rows = 0;

    // Patches of the pattern; the cells after them are black.
    std::size_t patches() const {
        return static_cast<std::size_t>(size) * static_cast<std::size_t>(size) *
               static_cast<std::size_t>(size);
    }
    std::size_t cells() const {
        return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows);
    }
};

Grid gridOf(int size, int width, int height);

// Pixels from `begin` to just before `end`.
struct Span {
    int begin = 0;
    int end = 0;
    int length() const { return end - begin; }
};

// The pixels of which the engine says that they lie in this one of `cells` parts of `extent`.
Span spanOf(int cell, int cells, int extent);

// What is left of a patch without the pixels near its edges: about half.
Span insideOf(const Span& patch);

// The smallest patch of a grid.
int leastPatchSide(int cells, int extent);

struct Cell {
    float middle[3] = {};  // red, green, blue
    float noise = 0.0f;    // standard deviation in the worst channel; not a number when a value is
};

// Reads cell after cell of one picture.
class CellReader {
public:
    CellReader(const Picture& picture, const Grid& grid) : picture_(picture), grid_(grid) {}

    // `index` as patches are numbered: from the top left, row by row.
    Cell read(std::size_t index);
    // The top left pixel of a cell.
    Span columnOf(std::size_t index) const;
    Span rowOf(std::size_t index) const;

private:
    void readChannel(std::size_t channel, Cell& cell);

    Picture picture_;
    Grid grid_;
    Span columns_;
    Span rows_;
    std::vector<float> values_;
};

std::vector<Cell> readCells(const Picture& picture, const Grid& grid);

}  // namespace looks
