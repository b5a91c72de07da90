// Will a look work in the effect? The verdict is that of the effect's own code, with its reasons in
// words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "looks/facts.h"
#include "looks/finding.h"
#include "native/src/lut_engine.h"

namespace looks {

struct Check {
    // No finding is fatal: the effect shows the look.
    bool works = false;
    // The look as it was given: name and match of a .cube file too. Its size is 0 where it could
    // not be read, its kind tw::LutKind::kLut otherwise.
    tw::Lut3D lut;
    std::vector<Finding> findings;  // heaviest first
    std::optional<Facts> facts;     // of a look that could be read
    // What a .cube file loses as it becomes a text.
    std::optional<Precision> precision;
};

// A .cube file; the last part of `path` gives the name, as the LUT button takes it. Threads: any.
// Throws what strings and vectors throw.
Check checkCube(const std::string& contents, const std::wstring& path);

// A TWLUT text, as tw::embeddedText gives it. The same.
Check checkText(const std::string& text);

}  // namespace looks
