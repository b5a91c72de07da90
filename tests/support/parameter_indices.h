// Places of the effect's parameters in the host's array, as projects and hosts know them. Stated
// here once more, so that a change of the effect's own list shows.
#pragma once

namespace twtest {

inline constexpr int kAmount = 1;
inline constexpr int kLut = 2;
inline constexpr int kLutButton = 3;
inline constexpr int kEditButton = 4;

}  // namespace twtest
