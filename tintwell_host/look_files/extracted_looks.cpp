#include "tintwell_host/look_files/extracted_looks.h"

#include <algorithm>
#include <string_view>
#include <system_error>

#include "looks/forms.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"

namespace program {

std::string fileNameOf(const std::string& name) {
    constexpr std::size_t kLongest = 100;
    std::string file = name;
    std::ranges::replace_if(
        file,
        [](unsigned char c) {
            return c < 0x20 || c == 0x7F ||
                   std::string_view("/\\:*?\"<>|").find(static_cast<char>(c)) !=
                       std::string_view::npos;
        },
        '_');
    if (file.starts_with('.')) file[0] = '_';
    if (file.size() > kLongest) {
        std::size_t end = kLongest;
        // Not within a character of UTF-8.
        while (end > 0 && (file[end] & 0xC0) == 0x80)
            --end;
        file.resize(end);
    }
    return file.empty() ? "look" : file;
}

ExtractedLooks::ExtractedLooks(const std::string& folder) : folder_(folder) {
    std::error_code failed;
    std::filesystem::create_directories(folder_, failed);
    if (failed) {
        throw Failure("cannot make the folder '" + folder + "': " + failed.message(),
                      exitFor(failed.value()));
    }
}

void ExtractedLooks::write(const tw::Lut3D& lut, const std::string& text) const {
    const std::string name = fileNameOf(lut.name);
    const auto taken = [this](const std::string& base) {
        std::error_code unknown;
        return std::filesystem::exists(folder_ / (base + ".cube"), unknown) ||
               std::filesystem::exists(folder_ / (base + ".twlut"), unknown);
    };
    std::string base = name;
    for (int number = 2; taken(base); ++number)
        base = name + " " + std::to_string(number);
    writeWhole((folder_ / (base + ".cube")).string(), looks::writeCube(lut));
    writeWhole((folder_ / (base + ".twlut")).string(), text + "\n");
}

}  // namespace program
