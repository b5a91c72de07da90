// Whether the patches of a pattern stand in its order.
#pragma once

#include <vector>

#include "looks/pattern/cells.h"

namespace looks {

// How much neighbouring points of the lattice differ, against what points at random would: 0 for
// equal neighbours, about 1 for patches in disorder. `cells` are numbered as patches are.
struct Mirrored {
    bool leftToRight = false;
    bool upsideDown = false;
};
double roughness(const std::vector<Cell>& cells, const Grid& grid, const Mirrored& mirrored = {});

}  // namespace looks
