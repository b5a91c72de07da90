// A .cube file as the LUT button takes it: judged by its contents, and turned into the text to
// store.
//
// Threads: any. They throw what strings and vectors throw.
#pragma once

#include <cstdint>
#include <string>

#include "lut_text.h"

namespace tw {

// What a file became. `text` is its TWLUT3 text with the file's match id and name.
struct LutFile {
    std::string text;
    std::int32_t size = 0;  // points per axis
};

enum class LutFileResult {
    kLoaded,
    kUnreadable,     // cannot be opened, is empty, or does not parse
    kForeignDomain,  // its input domain is not exactly 0..1 on every channel
};

// Makes `file` of the contents of the file at `path`, which gives the name only. kUnreadable leaves
// the parser's reason in `reason`, nothing when there are no contents.
LutFileResult judgeLutFile(const std::string& contents, const std::wstring& path, LutFile& file,
                           std::string& reason);

// File name of a path, without folder (either slash counts) and without its last extension.
std::wstring lutNameOf(const std::wstring& path);

// The number after the first "# Tintwell match " in a .cube text, as atol reads it; 0 without one.
MatchId matchIdOf(const std::string& cubeText);

}  // namespace tw
