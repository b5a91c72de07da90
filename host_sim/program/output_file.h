// Files that appear whole or not at all.
#pragma once

#include <functional>
#include <string>

namespace program {

// Calls write(name) with a name beside `path` and of the same extension, then renames that file to
// `path`. When write throws or the rename fails the partial file is removed, `path` is as it was,
// and the exception (or a Failure) goes on.
void writeWhole(const std::string& path, const std::function<void(const std::string&)>& write);

// The whole of a text file, or of standard input for "-". Throws Failure.
std::string readText(const std::string& path);

// Writes a text file whole. Throws Failure.
void writeText(const std::string& path, const std::string& text);

}  // namespace program
