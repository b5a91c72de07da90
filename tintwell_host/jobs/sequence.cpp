#include "tintwell_host/jobs/sequence.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <optional>
#include <regex>
#include <string_view>
#include <system_error>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

struct Mark {
    std::string before;  // with the folder
    std::string after;
    int width = 0;  // with the sign
};

const std::regex kMark("%(?:0([1-9]))?d|(#+|@+)|[$]F([1-9])?");

std::optional<Mark> findMark(const std::string& path) {
    const std::size_t name = path.rfind('/') == std::string::npos ? 0 : path.rfind('/') + 1;
    std::smatch parts;
    const auto begin = path.begin() + static_cast<std::ptrdiff_t>(name);
    if (!std::regex_search(begin, path.end(), parts, kMark)) return std::nullopt;
    Mark mark{path.substr(0, name) + parts.prefix().str(), parts.suffix().str(), 0};
    if (parts[1].matched) mark.width = std::stoi(parts[1]);
    if (parts[2].matched) mark.width = static_cast<int>(parts[2].length());
    if (parts[3].matched) mark.width = std::stoi(parts[3]);
    return mark;
}

std::string numbered(const Mark& mark, int frame) {
    std::string digits = std::to_string(frame);
    const auto width = static_cast<std::size_t>(mark.width);
    if (digits.size() < width) digits.insert(frame < 0 ? 1 : 0, width - digits.size(), '0');
    return mark.before + digits + mark.after;
}

// The number in `file`, if the sequence would call that frame just so.
std::optional<int> frameIn(const Mark& mark, const std::string& file) {
    if (!file.starts_with(mark.before)) return std::nullopt;
    int frame = 0;
    const char* digits = file.data() + mark.before.size();
    const auto read = std::from_chars(digits, file.data() + file.size(), frame);
    if (read.ec != std::errc() || numbered(mark, frame) != file) return std::nullopt;
    return frame;
}

}  // namespace

bool isSequence(const std::string& path) {
    return findMark(path).has_value();
}

std::string frameFile(const std::string& pattern, int frame) {
    const std::optional<Mark> mark = findMark(pattern);
    return mark ? numbered(*mark, frame) : pattern;
}

std::vector<int> existingFrames(const std::string& pattern) {
    const std::optional<Mark> mark = findMark(pattern);
    std::vector<int> frames;
    const std::string folder = pattern.substr(0, pattern.rfind('/') + 1);
    std::error_code failed;
    for (fs::directory_iterator entry(folder.empty() ? "." : folder, failed), end;
         mark && !failed && entry != end; entry.increment(failed)) {
        const auto frame = frameIn(*mark, folder + entry->path().filename().string());
        if (frame) frames.push_back(*frame);
    }
    const std::string reason = failed ? ": " + failed.message() : "";
    if (frames.empty() && (!failed || failed == std::errc::no_such_file_or_directory)) {
        throw Failure("no file matches '" + pattern + "'" + reason);
    }
    if (failed) {
        throw Failure("cannot read the folder of '" + pattern + "'" + reason,
                      exitFor(failed.value()));
    }
    std::sort(frames.begin(), frames.end());
    return frames;
}

}  // namespace program
