#include "tintwell_host/files/frame_size.h"

#include <regex>

#include "tintwell_host/files/failure.h"

namespace program {

FrameSize parseFrameSize(const std::string& text) {
    std::smatch parts;
    if (!std::regex_match(text, parts, std::regex("([1-9][0-9]{0,4})x([1-9][0-9]{0,4})"))) {
        throw Failure("'" + text + "' is no frame size; write it as 1920x1080");
    }
    return {std::stoi(parts[1]), std::stoi(parts[2])};
}

}  // namespace program
