// A folder of its own for a test, which can stand in for the user's home. The real home is never
// read or written.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>

namespace twtest {

class TempFolder {
public:
    TempFolder() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "tintwell-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make " + pattern);
        path_ = pattern;
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const std::string& path() const { return path_; }
    std::string operator/(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

// A temporary folder that HOME points to. The data folder is there unless asked otherwise.
class TempHome : public TempFolder {
public:
    enum class Holds { kNothing, kSupportFolder, kDataFolder };

    explicit TempHome(Holds holds = Holds::kDataFolder) {
        setenv("HOME", path().c_str(), 1);
        if (holds != Holds::kNothing) std::filesystem::create_directories(supportFolder());
        if (holds == Holds::kDataFolder) std::filesystem::create_directories(dataFolder());
    }

    std::string supportFolder() const { return path() + "/Library/Application Support"; }
    std::string dataFolder() const { return supportFolder() + "/Tintwell"; }
    std::string dataFile(const std::string& name) const { return dataFolder() + "/" + name; }
};

inline void writeFile(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    file << bytes;
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
}

inline std::string readFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

}  // namespace twtest
