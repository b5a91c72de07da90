// Turns the bytes of the LUT parameter into one shared decoded LUT per content.
#pragma once

#include <memory>
#include <string>

#include "export.h"
#include "lut_engine.h"

namespace tw {

// The decoded LUT of a parameter's raw bytes, or null for "no LUT": fewer than 6 bytes, no TWLUT
// text, "TWLUT0" or a text that does not parse. A calibration request is a record with size 0 and
// probe n. The last 8 contents are kept, first in first out, failures included, so that equal bytes
// give the very same object while they are kept; the object never changes and lives as long as
// anyone holds it.
//
// *err (when given) is set only by the call that decoded the bytes itself and failed; a later call
// with the same bytes leaves it alone.
//
// Threads: any. One mutex guards the list of kept contents and is not held while decoding, so two
// threads that meet new bytes at once may both decode them. No other lock is taken under it.
// Throws what memory exhaustion throws.
TW_EXPORT std::shared_ptr<const Lut3D> embeddedLut(const void* bytes, unsigned long count,
                                                   std::string* err);

}  // namespace tw
