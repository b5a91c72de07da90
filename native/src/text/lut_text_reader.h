// Reads the LUT parameter's bytes without a copy of their text. Internal to the text's readers.
#pragma once

#include <string>

#include "native/src/lut_engine.h"

namespace tw {

// What parseEmbeddedText(embeddedText(bytes, count), lut, err) gives; bytes that hold no text fail
// with "parameter does not hold TWLUT text". Besides the record it allocates no more than a header
// takes. Threads: any; throws std::bad_alloc.
bool readParameter(const void* bytes, unsigned long count, Lut3D& lut, std::string* err);

}  // namespace tw
