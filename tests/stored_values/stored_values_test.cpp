// Values as they lie in people's projects. They decode to the same bits, or are refused with the
// same words, in every version and on every processor.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "native/src/lut_cache.h"
#include "tests/stored_values/expectation.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

using Lines = std::vector<std::string>;

// By the files' names.
std::map<std::string, Lines> expectations() {
    std::map<std::string, Lines> expected;
    std::istringstream text(twtest::readFile(TINTWELL_STORED_VALUES "/expectations.txt"));
    Lines* current = nullptr;
    for (std::string line; std::getline(text, line);) {
        if (line.starts_with("file "))
            current = &expected[line.substr(5)];
        else if (current && !line.empty())
            current->push_back(line);
    }
    return expected;
}

std::string bytesOf(const std::string& name) {
    return twtest::readFile(TINTWELL_STORED_VALUES "/values/" + name);
}

Lines decodedLines(const std::string& bytes) {
    stored_values::Decoded decoded;
    decoded.lut = tw::embeddedLut(bytes.data(), bytes.size(), &decoded.error);
    return stored_values::linesOf(bytes.size(), decoded);
}

TEST(StoredValues, decodeAsTheyAlwaysDid) {
    const std::map<std::string, Lines> expected = expectations();
    EXPECT_GT(expected.size(), 60U);
    for (const auto& [name, lines] : expected)
        EXPECT_EQ(lines, decodedLines(bytesOf(name))) << name;
}

TEST(StoredValues, areAllExpected) {
    const std::map<std::string, Lines> expected = expectations();
    std::size_t files = 0;
    for (const fs::directory_entry& file :
         fs::directory_iterator(TINTWELL_STORED_VALUES "/values")) {
        ++files;
        EXPECT_TRUE(expected.contains(file.path().filename())) << file.path();
    }
    EXPECT_EQ(files, expected.size());
}

}  // namespace
