// The demonstration's photograph, as scripts/fetch-samples leaves it.
#pragma once

#include "native/src/lut_engine.h"

namespace bench {

// Fills a BGRA image with the middle of the photograph, mirrored beyond its borders. False, and
// nothing is done, when the file is not there or cannot be read.
bool paintPhotograph(const tw::ImageF& image);
bool paintPhotograph(const tw::Image8& image);

}  // namespace bench
