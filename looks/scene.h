// A picture to look at looks with: computed, so that it is always at hand and free to give away.
#pragma once

#include <vector>

namespace looks {

// Evening over hills and a lake, with a row of balls as film crews use them: greys, skin and strong
// colours, from deep shadows to the disc of the sun. Always the same picture of opaque pixels: red,
// green, blue, alpha, from 0 to 1 as a screen shows them, rows top down without padding; width and
// height are 2 or more. Threads: any. Throws what vectors throw.
std::vector<float> computedScene(int width, int height);

}  // namespace looks
