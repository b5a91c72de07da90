#include "looks/neutral_axis.h"

namespace looks {

std::vector<Colour> neutralAxis(const tw::Lut3D& lut, int count) {
    std::vector<Colour> colours(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        const float at = static_cast<float>(i) / static_cast<float>(count - 1);
        Colour grey;
        for (std::size_t k = 0; k < 3; ++k) {
            grey[k] = lut.domainMin[k] + (lut.domainMax[k] - lut.domainMin[k]) * at;
        }
        tw::sampleTetra(lut, grey.data(), colours[static_cast<std::size_t>(i)].data());
    }
    return colours;
}

}  // namespace looks
