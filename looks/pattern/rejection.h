// Why a picture is not measured: each function gives one sentence for the user, or nothing when it
// has nothing to object.
#pragma once

#include <string>
#include <vector>

#include "looks/pattern/cells.h"

namespace looks {

// The range of the picture's values, without the hundredth part at either end.
float contrastOf(const Picture& picture);

// The noise from which on a patch counts as not flat. Compression leaves much less, a patch across
// the edge of two colours makes more.
float flatnessLimit(float contrast);

bool isFlat(const Cell& cell, float limit);

std::string whyNoPicture(const Picture& picture, float contrast);
std::string whyTooSmall(const Picture& picture, const Grid& grid);
// When some of the cells are not flat.
std::string whyNotFlat(const Picture& picture, const Grid& grid, const std::vector<Cell>& cells,
                       float limit);
// When all of them are.
std::string whyDisordered(const Picture& picture, const Grid& grid, const std::vector<Cell>& cells,
                          float limit);

}  // namespace looks
