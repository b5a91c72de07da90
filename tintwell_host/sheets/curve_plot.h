// What a look makes of greys, as three curves.
#pragma once

#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tintwell_host/sheets/canvas.h"

namespace program {

// Draws the curves of one look, or of two: those of the second are dashed. The channels differ in
// width as well as in colour, so that they are told apart by everybody, and where they lie upon one
// another. Outputs outside 0..1 lie on shaded ground, with a dot wherever a curve is there; a flat
// end, where greys come out alike, is drawn bold. The bar at the right spans all values of the
// first look, greys or not.
void drawCurves(Canvas& canvas, const Box& box, const std::vector<const tw::Lut3D*>& luts);

}  // namespace program
