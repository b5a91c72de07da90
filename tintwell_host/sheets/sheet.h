// A look on one sheet, as SVG.
#pragma once

#include <string>

#include "looks/check.h"
#include "tintwell_host/files/picture.h"

namespace program {

// One look that works: the picture before and after, by Amount and where it clips, the curves of
// greys, and what `check` says of it.
std::string lookSheet(const looks::Check& look, const Picture& picture);

// Two looks, and their difference.
std::string comparisonSheet(const looks::Check& one, const looks::Check& other,
                            const Picture& picture);

}  // namespace program
