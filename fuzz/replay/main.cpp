// Feeds a fuzz target every file of a folder, in order of their names: replay_NAME FOLDER. A target
// ends the process when it finds something; the last name printed is then the input that did it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::string> filesOf(const char* folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path().string());
    std::sort(files.begin(), files.end());
    return files;
}

void feed(const std::string& file) {
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    const std::string input = twtest::readFile(file);
    // Of exactly that size, so that a read past the end is seen.
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

}  // namespace

int main(int count, char** words) {
    if (count != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", words[0]);
        return 2;
    }
    const std::vector<std::string> files = filesOf(words[1]);
    for (const std::string& file : files)
        feed(file);
    std::printf("%zu inputs\n", files.size());
    return files.empty() ? 1 : 0;
}
