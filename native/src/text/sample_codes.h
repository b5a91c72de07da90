// The samples of a TWLUT text: base64 of 16-bit codes. Internal to the reader.
#pragma once

#include <vector>

#include "native/src/text/text_view.h"

namespace tw {

// Fills `values` from the text, skipping what is not of the base64 alphabet, up to "=" or the end:
// code q becomes lo + q * step, rounded once on every processor, so that a project holds the same
// LUT wherever it is opened. True when the text holds all values; the ones that it lacks stay.
// Threads: any; never throws.
bool decodeSamples(const TextView& text, float lo, float step, std::vector<float>& values);

}  // namespace tw
