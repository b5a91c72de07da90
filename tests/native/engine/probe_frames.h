// Frames that the calibration pattern is drawn into.
#pragma once

#include <array>
#include <ostream>

namespace twtest {

using Colour = std::array<float, 3>;

struct ProbeFrame {
    int n, width, height;
};

// Odd and even sizes, borders that fall between pixels, frames smaller than the grid, tall frames.
inline constexpr ProbeFrame kProbeFrames[] = {
    {2, 8, 4},    {2, 7, 5},    {3, 40, 33}, {4, 1, 100},  {5, 100, 1}, {17, 94, 53}, {9, 61, 47},
    {33, 50, 40}, {64, 37, 70}, {2, 1, 1},   {64, 90, 50}, {5, 11, 11}, {6, 7, 200},  {8, 200, 7}};

inline std::ostream& operator<<(std::ostream& out, const ProbeFrame& frame) {
    return out << "n " << frame.n << ", " << frame.width << " x " << frame.height;
}

}  // namespace twtest
