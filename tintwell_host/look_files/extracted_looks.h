// A folder of looks, each as a .cube file and as TWLUT text.
#pragma once

#include <filesystem>
#include <string>

#include "native/src/lut_engine.h"

namespace program {

class ExtractedLooks {
public:
    // Makes the folder when it is not there. Throws Failure.
    explicit ExtractedLooks(const std::string& folder);

    // Writes NAME.cube and NAME.twlut, after the look's own name as far as files can have it. What
    // is there already stays: then it is "NAME 2", and so on. Throws Failure.
    void write(const tw::Lut3D& lut, const std::string& text) const;

private:
    std::filesystem::path folder_;
};

// The name of a look as that of a file: without what file systems refuse, or would take for a
// folder or a hidden file, and of at most 100 bytes; "look" where nothing is left.
std::string fileNameOf(const std::string& name);

}  // namespace program
