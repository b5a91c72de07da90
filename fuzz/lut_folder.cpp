// The path functions in a home of their own: lut-folder.txt holds the rest of the input, behind the
// path of the home or not, and is read once more byte by byte; then HOME itself is the input's.
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "native/src/paths.h"
#include "tests/support/temp_folder.h"

namespace {

using twfuzz::require;

const std::wstring kDataFolder = L"/Library/Application Support/Tintwell/";
const std::wstring kFallback = L"/Documents/Tintwell LUTs";

// Folders and a file whose names exercise every rule of the reader.
class Home : public twtest::TempHome {
public:
    Home() {
        for (const char* name : {"LUTs", "LUTs\t", "L\xC3\xBCTs \xF0\x9F\x98\x80", "\xC2\x80"})
            std::filesystem::create_directory(*this / name);
        twtest::writeFile(*this / "plain.cube", "x");
    }
};

bool exists(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

std::wstring lutFolderSlowly(const std::string& content) {
    std::string path;
    for (const char c : content) {
        if (path.size() < 2047) path += c;
    }
    while (!path.empty() && (path.back() == '\n' || path.back() == '\r' || path.back() == ' '))
        path.pop_back();
    const std::wstring candidate = tw::fromUtf8(path);
    if (!path.empty() && exists(tw::toUtf8(candidate))) return candidate;
    const std::wstring homeFolder = tw::fromUtf8(std::getenv("HOME"));
    return homeFolder.empty() ? L"" : homeFolder + kFallback;
}

void checkPaths(const std::wstring& homeFolder, const std::wstring& name) {
    require(tw::homeDir() == homeFolder, "homeDir is HOME");
    require(tw::dataPath(name) == homeFolder + kDataFolder + name, "dataPath joins");
    const std::wstring path = tw::dataPath(name);
    require(tw::fileExists(path) == exists(tw::toUtf8(path)), "fileExists asks the system");
}

// A file of that name, unless it leads out of the folder, is written and read by its path.
void checkFile(const std::wstring& name) {
    if (name.find(L'/') != std::wstring::npos || name.find(L'\0') != std::wstring::npos) return;
    const std::wstring path = tw::dataPath(name);
    if (tw::fileExists(path)) return;
    std::FILE* out = tw::openFile(path, "wb");
    // Some systems take well-formed names only.
    if (!out) return require(errno == EILSEQ, "a file can be made");
    std::fputs("here", out);
    std::fclose(out);
    require(twtest::readFile(tw::toUtf8(path)) == "here", "the file is where the path says");
    require(std::remove(tw::toUtf8(path).c_str()) == 0, "and goes with it");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Home home;
    twfuzz::Input input(data, size);
    setenv("HOME", home.path().c_str(), 1);
    const bool below = input.flag();
    const std::string name = input.bytes(input.below(40));
    checkPaths(tw::fromUtf8(home.path()), tw::fromUtf8(name));
    checkFile(tw::fromUtf8(name));

    const std::string content = (below ? home.path() + "/" : "") + input.rest();
    twtest::writeFile(home.dataFile("lut-folder.txt"), content);
    require(tw::lutFolder() == lutFolderSlowly(content), "lutFolder reads by its rule");

    setenv("HOME", name.c_str(), 1);
    checkPaths(tw::fromUtf8(name.c_str()), L"effect.log");
    if (!tw::fileExists(tw::dataPath(L"lut-folder.txt")))
        require(tw::lutFolder() == lutFolderSlowly(""), "lutFolder falls back");
    return 0;
}
