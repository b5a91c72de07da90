// Whether the patches of a pattern stand in its order.
#pragma once

#include <vector>

#include "looks/pattern/cells.h"

namespace looks {

// How a picture may be turned over; both together are half a turn.
struct Mirrored {
    bool leftToRight = false;
    bool upsideDown = false;
};

// How much neighbouring points of the lattice differ once the picture is mirrored back, against
// what points at random would: 0 for neighbours that hardly differ, about 1 for patches in disorder
// or all alike. `cells` are numbered as patches are.
double roughness(const std::vector<Cell>& cells, const Grid& grid, const Mirrored& mirrored = {});

}  // namespace looks
