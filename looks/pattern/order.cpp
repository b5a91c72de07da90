#include "looks/pattern/order.h"

namespace looks {
namespace {

double squaredDistance(const Cell& a, const Cell& b) {
    double sum = 0.0;
    for (int channel = 0; channel < 3; ++channel) {
        const double off =
            static_cast<double>(a.middle[channel]) - static_cast<double>(b.middle[channel]);
        sum += off * off;
    }
    return sum;
}

// The patches in lattice order, as they would stand after the picture was mirrored back.
std::vector<Cell> latticeOf(const std::vector<Cell>& cells, const Grid& grid,
                            const Mirrored& mirrored) {
    const auto columns = static_cast<std::size_t>(grid.columns);
    const auto rows = static_cast<std::size_t>(grid.rows);
    std::vector<Cell> lattice(grid.patches());
    for (std::size_t index = 0; index < lattice.size(); ++index) {
        std::size_t column = index % columns;
        std::size_t row = index / columns;
        if (mirrored.leftToRight) column = columns - 1 - column;
        if (mirrored.upsideDown) row = rows - 1 - row;
        lattice[index] = cells[row * columns + column];
    }
    return lattice;
}

// The mean squared distance of points that are `step` apart along an axis of the lattice.
double meanAlong(const std::vector<Cell>& lattice, std::size_t step, std::size_t size) {
    double sum = 0.0;
    std::size_t pairs = 0;
    for (std::size_t index = 0; index < lattice.size(); ++index) {
        if (index / step % size == size - 1) continue;
        sum += squaredDistance(lattice[index], lattice[index + step]);
        ++pairs;
    }
    return sum / static_cast<double>(pairs);
}

double variance(const std::vector<Cell>& lattice) {
    Cell mean;
    const auto count = static_cast<double>(lattice.size());
    for (int channel = 0; channel < 3; ++channel) {
        double sum = 0.0;
        for (const Cell& cell : lattice)
            sum += static_cast<double>(cell.middle[channel]);
        mean.middle[channel] = static_cast<float>(sum / count);
    }
    double sum = 0.0;
    for (const Cell& cell : lattice)
        sum += squaredDistance(cell, mean);
    return sum / count;
}

}  // namespace

double roughness(const std::vector<Cell>& cells, const Grid& grid, const Mirrored& mirrored) {
    const std::vector<Cell> lattice = latticeOf(cells, grid, mirrored);
    const auto size = static_cast<std::size_t>(grid.size);
    const double neighbours = meanAlong(lattice, 1, size) + meanAlong(lattice, size, size) +
                              meanAlong(lattice, size * size, size);
    // Two points at random are twice the variance apart.
    return neighbours / 3.0 / (2.0 * variance(lattice));
}

}  // namespace looks
