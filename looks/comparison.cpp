#include "looks/comparison.h"

#include <algorithm>
#include <cmath>

namespace looks {

std::vector<float> comparedColours(const tw::Lut3D& lut) {
    constexpr float kTop = kComparedPoints - 1;
    std::vector<float> colours(tw::latticeFloats(kComparedPoints));
    for (std::size_t point = 0; point < colours.size() / 3; ++point) {
        const float in[3] = {static_cast<float>(point % kComparedPoints) / kTop,
                             static_cast<float>(point / kComparedPoints % kComparedPoints) / kTop,
                             static_cast<float>(point / kComparedPoints / kComparedPoints) / kTop};
        tw::sampleTetra(lut, in, &colours[point * 3]);
    }
    return colours;
}

Steps stepsBetween(const std::vector<float>& one, const std::vector<float>& other) {
    Steps found;
    for (std::size_t i = 0; i < one.size(); ++i) {
        const double steps =
            std::abs(static_cast<double>(one[i]) - static_cast<double>(other[i])) * 255.0;
        found.largest = std::max(found.largest, steps);
        found.mean += steps / static_cast<double>(one.size());
    }
    return found;
}

}  // namespace looks
