// Independent programs that apply a .cube file by tetrahedral interpolation, each behind the same
// function.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace peers {

// A float picture: red, green, blue, alpha; rows top down.
struct Pixels {
    int width = 0;
    int height = 0;
    std::vector<float> rgba;
};

// The picture with the look of `cube` applied in single precision; nothing when this program is not
// installed here. `scratch` is a folder for files. Throws std::runtime_error when it fails.
std::optional<Pixels> applyWithOpenColorIO(const std::string& cube, const Pixels& in);
std::optional<Pixels> applyWithFFmpeg(const std::string& cube, const Pixels& in,
                                      const std::string& scratch);

}  // namespace peers
