// The user's home, the data folder shared with the companion panel, the LUT folder, and files
// opened by wide path.
//
// Inside the plug-in paths are wide strings of one Unicode code point per element and become UTF-8
// only where they are handed to the system. No function here logs or reports an error other than by
// its result. Threads: any; the environment is read on every call. They throw only std::bad_alloc.
#pragma once

#include <cstdio>
#include <string>

#include "export.h"

namespace tw {

// The environment variable HOME, as it is; empty when unset.
TW_EXPORT std::wstring homeDir();

// Path of file `name` in the per-user data folder; of an empty name, that folder with a trailing
// slash. Pure string work: nothing is looked up or created.
TW_EXPORT std::wstring dataPath(const std::wstring& name);

// The folder in which the LUT dialog opens: the one named by "lut-folder.txt" in the data folder if
// it exists (only the first 2047 bytes of the file count), else "Documents/Tintwell LUTs" in the
// home, which may not exist; empty without a home.
TW_EXPORT std::wstring lutFolder();

// Opens a file with a mode of fopen. Null on failure, errno telling why; the caller closes it. A
// FIFO is never opened, since that may wait without end; errno then means nothing. That
// costs a status query of the path.
TW_EXPORT std::FILE* openFile(const std::wstring& path, const char* mode);

// Whether anything exists at `path`.
TW_EXPORT bool fileExists(const std::wstring& path);

// Lenient on purpose: nothing is refused. Surrogates and values above U+10FFFF are written like any
// other code point. What fromUtf8 made of well-formed UTF-8 goes back unchanged; of other bytes it
// may not (0x80 goes back as C2 80).
TW_EXPORT std::string toUtf8(const std::wstring& text);

// The inverse, as lenient: bytes 0x80..0xBF in the place of a lead byte stand for themselves,
// continuation bytes are not checked, and a sequence cut off by the end of the text is dropped.
TW_EXPORT std::wstring fromUtf8(const std::string& text);

}  // namespace tw
