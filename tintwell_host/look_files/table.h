// Columns for the terminal.
#pragma once

#include <string>
#include <vector>

namespace program {

using Row = std::vector<std::string>;

// The rows with their columns aligned, as wide as the widest text of each; the last one is not
// filled up. All rows have as many texts as the first.
std::string tableOf(const std::vector<Row>& rows);

// Text of a file for the terminal: control characters, which could do things there, as '?'.
std::string plain(std::string text);

}  // namespace program
