// Why the effect refuses a .cube file, in words that help.
#pragma once

#include <string>

#include "looks/finding.h"
#include "native/src/lut_engine.h"

namespace looks {

// `reason` is what tw::parseCube said of `contents`, empty for an empty file. The words begin with
// that reason. Threads: any.
Finding explainRefusal(const std::string& contents, const std::string& reason);

// Of a LUT whose domain is not 0..1.
Finding explainDomain(const tw::Lut3D& lut);

}  // namespace looks
