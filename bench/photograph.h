// The demonstration's photograph, as scripts/fetch-samples leaves it.
#pragma once

#include "native/src/lut_engine.h"

namespace bench {

// Fills a BGRA image with the middle of the photograph. False, and nothing is done, when the file
// is not there, cannot be read or is smaller than the image.
bool paintPhotograph(const tw::ImageF& image);
bool paintPhotograph(const tw::Image8& image);

}  // namespace bench
