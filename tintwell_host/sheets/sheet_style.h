// How sheets look.
#pragma once

#include "tintwell_host/sheets/canvas.h"

namespace program::style {

inline constexpr Paint kBackground = 0x17181A;
inline constexpr Paint kPanel = 0x212327;
inline constexpr Paint kFaint = 0x4A4E55;
inline constexpr Paint kQuiet = 0x9AA0A8;
inline constexpr Paint kText = 0xE9EBEE;

// Red, green and blue that colour-blind people tell apart: they differ in lightness too.
inline constexpr Paint kChannels[3] = {0xF0603C, 0x7FDB8A, 0x4A8FF7};

inline constexpr TextStyle kTitle{44.0, kText, true};
inline constexpr TextStyle kSubtitle{19.0, kQuiet};
inline constexpr TextStyle kCaption{15.0, kQuiet};
inline constexpr TextStyle kStrongCaption{15.0, kText, true};
inline constexpr TextStyle kBody{16.0, kText};
inline constexpr TextStyle kSmall{13.5, kQuiet};

}  // namespace program::style
