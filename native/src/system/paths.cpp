#include "native/src/paths.h"

#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>

#include "native/src/file.h"

namespace tw {
namespace {

static_assert(sizeof(wchar_t) == 4, "paths hold one code point per element");

bool exists(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0;
}

bool isFifo(const std::string& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISFIFO(status.st_mode);
}

// What "lut-folder.txt" holds, up to its first 2047 bytes, less line ends and blanks at its end.
std::string readLutFolderFile() {
    const File file(openFile(dataPath(L"lut-folder.txt"), "rb"));
    if (!file) return {};
    char buffer[2048] = {};
    const std::size_t count = std::fread(buffer, 1, sizeof buffer - 1, file.get());
    std::string text(buffer, count);
    text.erase(text.find_last_not_of("\n\r ") + 1);
    return text;
}

// How a lead byte starts a sequence: how many bytes follow, and which of its bits count.
struct Lead {
    std::size_t extra;
    unsigned mask;
};

Lead classify(unsigned byte) {
    if (byte >= 0xF0) return {3, 0x07};
    if (byte >= 0xE0) return {2, 0x0F};
    if (byte >= 0xC0) return {1, 0x1F};
    return {0, 0xFF};
}

}  // namespace

std::wstring homeDir() {
    const char* home = std::getenv("HOME");
    return home ? fromUtf8(home) : std::wstring();
}

std::wstring dataPath(const std::wstring& name) {
    return homeDir() + L"/Library/Application Support" + L"/" + L"Tintwell" + L"/" + name;
}

std::wstring lutFolder() {
    const std::string named = readLutFolderFile();
    if (!named.empty()) {
        std::wstring candidate = fromUtf8(named);
        // Tested as the system will be given it. It need not be a folder: the dialog handles that.
        if (exists(toUtf8(candidate))) return candidate;
    }
    const std::wstring home = homeDir();
    return home.empty() ? home : home + L"/Documents/Tintwell LUTs";
}

std::FILE* openFile(const std::wstring& path, const char* mode) {
    const std::string name = toUtf8(path);
    // Opening a FIFO would block the host's thread until another process opens the other end.
    if (isFifo(name)) return nullptr;
    return std::fopen(name.c_str(), mode);
}

bool fileExists(const std::wstring& path) {
    return exists(toUtf8(path));
}

std::string toUtf8(const std::wstring& text) {
    std::string bytes;
    bytes.reserve(text.size());
    const auto put = [&bytes](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    const auto putContinuation = [&put](std::uint32_t bits) { put(0x80 | (bits & 0x3F)); };
    for (const wchar_t character : text) {
        const auto c = static_cast<std::uint32_t>(character);
        if (c < 0x80) {
            put(c);
        } else if (c < 0x800) {
            put(0xC0 | c >> 6);
            putContinuation(c);
        } else if (c < 0x10000) {
            put(0xE0 | c >> 12);
            putContinuation(c >> 6);
            putContinuation(c);
        } else {
            put((0xF0 | c >> 18) & 0xFF);
            putContinuation(c >> 12);
            putContinuation(c >> 6);
            putContinuation(c);
        }
    }
    return bytes;
}

std::wstring fromUtf8(const std::string& text) {
    std::wstring points;
    points.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        const unsigned byte = static_cast<unsigned char>(text[i]);
        const Lead lead = classify(byte);
        if (i + lead.extra >= text.size()) break;
        std::uint32_t value = byte & lead.mask;
        for (std::size_t k = 1; k <= lead.extra; ++k) {
            value = value << 6 | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        }
        points.push_back(static_cast<wchar_t>(value));
        i += lead.extra + 1;
    }
    return points;
}

}  // namespace tw
