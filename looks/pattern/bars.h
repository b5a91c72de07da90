// Bars of one colour at the edges of a picture.
#pragma once

#include <string>

#include "looks/picture_view.h"

namespace looks {

// One sentence when the picture has bars above and below or left and right, nothing when not.
std::string whyBarred(const Picture& picture);

}  // namespace looks
