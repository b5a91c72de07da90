#include "looks/accuracy.h"

#include <algorithm>

namespace looks {

constexpr double kStepsOf8Bits = 255.0;

// Compression shifts a patch by about half of what it makes its pixels scatter; a value of 8 bits
// is rounded by a quarter of a step, half a step at most.
Accuracy accuracyOf(const Measurement& measurement, bool isOf8Bits) {
    std::vector<float> sorted = measurement.noise;
    std::sort(sorted.begin(), sorted.end());
    const auto most = std::max_element(measurement.noise.begin(), measurement.noise.end());
    Accuracy accuracy;
    accuracy.middleNoise = static_cast<double>(sorted[sorted.size() / 2]) * kStepsOf8Bits;
    accuracy.mostNoise = static_cast<double>(*most) * kStepsOf8Bits;
    accuracy.noisiest = static_cast<std::size_t>(most - measurement.noise.begin());
    accuracy.middleError = accuracy.middleNoise / 2 + (isOf8Bits ? 0.25 : 0.0);
    accuracy.mostError = accuracy.mostNoise + (isOf8Bits ? 0.5 : 0.0);
    return accuracy;
}

std::array<double, 3> patternColour(std::size_t point, int size) {
    const auto steps = static_cast<std::size_t>(size);
    const auto top = static_cast<double>(size - 1);
    return {static_cast<double>(point % steps) / top,
            static_cast<double>(point / steps % steps) / top,
            static_cast<double>(point / steps / steps) / top};
}

}  // namespace looks
