// A picture to look at looks with: computed, so that it is always at hand and free to give away.
#pragma once

#include "tintwell_host/files/picture.h"

namespace program {

// Evening over hills and a lake, with a row of balls as film crews use them: greys, skin and strong
// colours, from deep shadows to the disc of the sun. Always the same picture, of floats from 0 to 1
// as a screen shows them; width and height are 2 or more.
Picture computedScene(int width, int height);

}  // namespace program
