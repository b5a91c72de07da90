// Grades by programs that know nothing of this one.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "tintwell_host/files/picture.h"

namespace round_trip {

using program::Picture;

struct Grade {
    std::string name;     // in test names
    std::string program;  // who does it
    std::string does;     // as it is written there
    bool floats;          // it takes float pictures, in 16 bits at least
    // The graded picture, in the depth of the given one; nothing when the program is not here.
    // Files go to the folder. Throws std::runtime_error when the program fails.
    std::function<std::optional<Picture>(const Picture&, const std::string& folder)> apply;
};

const std::vector<Grade>& grades();

// Through files of lossy compression, 8 bits only. Nothing when the program is not here.
std::optional<Picture> throughJpeg(const Picture& picture, const std::string& folder);
std::optional<Picture> throughH264(const Picture& picture, const std::string& folder);

// With an ASC CDL by OpenColorIO.
std::optional<Picture> gradeWithCdl(const Picture& picture);
// What that does, in words.
std::string cdlInWords();

}  // namespace round_trip
