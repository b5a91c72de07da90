#include "tintwell_host/look_files/table.h"

#include <algorithm>

namespace program {
namespace {

// Characters of UTF-8, each taken for one column.
std::size_t widthOf(const std::string& text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (c & 0xC0) != 0x80; }));
}

}  // namespace

std::string tableOf(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.empty() ? 0 : rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], widthOf(row[i]));
    }
    std::string table;
    for (const Row& row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            table += row[i] + std::string(widths[i] - widthOf(row[i]) + 2, ' ');
        table += row.back() + "\n";
    }
    return table;
}

std::string plain(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < 0x20 || c == 0x7F; }, '?');
    return text;
}

}  // namespace program
