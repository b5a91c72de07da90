// The messages of parseCube.
#pragma once

namespace twtest {

inline constexpr char kRange[] = "LUT_3D_SIZE out of range";
inline constexpr char kOneD[] = "1D LUTs are not supported";
inline constexpr char kData[] = "malformed data line";
inline constexpr char kNoSize[] = "no LUT_3D_SIZE";
inline constexpr char kCount[] = "wrong number of values";
inline constexpr char kDomain[] = "bad DOMAIN_MIN/MAX";

inline constexpr const char* kCubeMessages[] = {kRange, kOneD, kData, kNoSize, kCount, kDomain};

}  // namespace twtest
