#include "tintwell_host/sequence.h"

#include <OpenImageIO/filesystem.h>

#include <algorithm>
#include <regex>

#include "tintwell_host/failure.h"

namespace program {
namespace {

const std::regex kNumber("%(?:0([1-9]))?d");

}  // namespace

FrameRange parseFrameRange(const std::string& text) {
    std::smatch parts;
    if (!std::regex_match(text, parts, std::regex("([0-9]{1,9})(?:-([0-9]{1,9}))?"))) {
        throw Failure("'" + text + "' is no range of frames; write it as 1-240 or 17");
    }
    const int first = std::stoi(parts[1]);
    const int last = parts[2].matched ? std::stoi(parts[2]) : first;
    if (last < first) throw Failure("the range of frames '" + text + "' ends before it begins");
    return {first, last};
}

bool isSequence(const std::string& path) {
    return std::regex_search(path, kNumber);
}

std::string frameFile(const std::string& pattern, int frame) {
    std::smatch parts;
    if (!std::regex_search(pattern, parts, kNumber)) return pattern;
    std::string number = std::to_string(frame);
    const std::size_t width = parts[1].matched ? static_cast<std::size_t>(std::stoi(parts[1])) : 0;
    if (number.size() < width) number.insert(0, width - number.size(), '0');
    return parts.prefix().str() + number + parts.suffix().str();
}

std::vector<int> existingFrames(const std::string& pattern) {
    std::vector<int> frames;
    std::vector<std::string> files;
    OIIO::Filesystem::scan_for_matching_filenames(pattern, frames, files);
    if (frames.empty()) throw Failure("no file matches '" + pattern + "'");
    std::sort(frames.begin(), frames.end());
    return frames;
}

}  // namespace program
