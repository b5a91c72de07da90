// Writes the stored values and what they decode to: write_stored_values FOLDER. Refuses a folder
// that has any, and values that the effect's reader and the tests' own decode differently.
#include <cstdio>
#include <exception>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "native/src/lut_cache.h"
#include "tests/stored_values/expectation.h"
#include "tests/stored_values/stored_values.h"
#include "tests/support/temp_folder.h"
#include "tests/support/text_oracle.h"

namespace {

namespace fs = std::filesystem;

using stored_values::Decoded;
using stored_values::Value;
using Lines = std::vector<std::string>;

Decoded decoded(const std::string& bytes) {
    Decoded result;
    result.lut = tw::embeddedLut(bytes.data(), bytes.size(), &result.error);
    return result;
}

// The text in the bytes, read without the code under test; empty: none.
std::string textIn(const std::string& bytes) {
    if (bytes.starts_with("TWLUT")) return bytes;
    std::string low, high;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        low += bytes[i];
        high += bytes[i + 1];
    }
    const bool wide = high.find_first_not_of('\0') == std::string::npos;
    return wide && low.starts_with("TWLUT") ? low : "";
}

Decoded decodedIndependently(const std::string& bytes) {
    const std::string text = textIn(bytes);
    if (text.empty()) return {nullptr, "parameter does not hold TWLUT text"};
    twtest::ReadText read = twtest::readTextSlowly(text);
    if (!read.ok) return {nullptr, read.error};
    if (read.lut.size == 0 && read.lut.probe == 0) return {};
    return {std::make_shared<tw::Lut3D>(std::move(read.lut)), ""};
}

void writeAll(const fs::path& folder) {
    if (fs::exists(folder / "values")) throw std::runtime_error("there are stored values already");
    fs::create_directories(folder / "values");
    std::string table =
        "What the stored values decode to. Digest: FNV-1a, 64 bits, over the samples' bytes.\n\n";
    for (const Value& value : stored_values::allValues()) {
        const Decoded ours = decoded(value.bytes);
        const Lines lines = stored_values::linesOf(value.bytes.size(), ours);
        const Decoded other = decodedIndependently(value.bytes);
        if (lines != stored_values::linesOf(value.bytes.size(), other) ||
            (ours.lut && ours.lut->data != other.lut->data))
            throw std::runtime_error("two readers differ: " + value.name);
        twtest::writeFile(folder / "values" / value.name, value.bytes);
        table += "file " + value.name + "\n";
        for (const std::string& line : lines)
            table += line + "\n";
        table += "\n";
    }
    twtest::writeFile(folder / "expectations.txt", table);
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: write_stored_values FOLDER\n", stderr);
        return 2;
    }
    try {
        writeAll(arguments[1]);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "write_stored_values: %s\n", failure.what());
        return 1;
    }
    return 0;
}
