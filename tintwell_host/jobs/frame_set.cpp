#include "tintwell_host/jobs/frame_set.h"

#include <charconv>
#include <cstdint>
#include <string_view>
#include <unordered_set>

#include "tintwell_host/files/failure.h"

namespace program {
namespace {

constexpr std::int64_t kMostFrames = 1'000'000;

[[noreturn]] void refuse(const std::string& text) {
    throw Failure(
        "'" + text + "' is no set of frames; write it as 1-240, 1-240x2, 17 or 1-10,20-30",
        Exit::kWrongUsage);
}

std::string_view trimmed(std::string_view text) {
    while (text.starts_with(' '))
        text.remove_prefix(1);
    while (text.ends_with(' '))
        text.remove_suffix(1);
    return text;
}

// Takes a number of at most nine digits off the front.
bool takeNumber(std::string_view& text, int& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc() || length > (number < 0 ? 10u : 9u)) return false;
    text.remove_prefix(length);
    return true;
}

bool takeMark(std::string_view& text, char mark) {
    if (!text.starts_with(mark)) return false;
    text.remove_prefix(1);
    return true;
}

FrameRange parseRange(std::string_view part, const std::string& whole) {
    FrameRange range{0, 0, 1};
    if (!takeNumber(part, range.first)) refuse(whole);
    range.last = range.first;
    if (takeMark(part, '-') && !takeNumber(part, range.last)) refuse(whole);
    if (takeMark(part, 'x') && (!takeNumber(part, range.step) || range.step < 1)) refuse(whole);
    if (!part.empty()) refuse(whole);
    if (range.last < range.first) {
        throw Failure("the range of frames '" + whole + "' ends before it begins",
                      Exit::kWrongUsage);
    }
    return range;
}

std::int64_t countIn(const FrameRange& range, int last) {
    if (last < range.first) return 0;
    return (static_cast<std::int64_t>(last) - range.first) / range.step + 1;
}

}  // namespace

std::vector<FrameRange> parseFrameSet(const std::string& text) {
    std::vector<FrameRange> set;
    std::string_view rest = text;
    for (bool more = true; more;) {
        const std::size_t comma = rest.find(',');
        set.push_back(parseRange(trimmed(rest.substr(0, comma)), text));
        more = comma != std::string_view::npos;
        if (more) rest.remove_prefix(comma + 1);
    }
    return set;
}

ChosenFrames chooseFrames(const std::vector<FrameRange>& set, int end) {
    ChosenFrames chosen;
    chosen.cutAfter = end;
    std::int64_t total = 0;
    std::int64_t cut = 0;
    std::unordered_set<int> seen;
    for (const FrameRange& range : set) {
        const std::int64_t inside = countIn(range, std::min(range.last, end));
        total += inside;
        cut += countIn(range, range.last) - inside;
        if (total > kMostFrames) {
            throw Failure("a set of frames may name a million of them, and this names more",
                          Exit::kWrongUsage);
        }
        for (std::int64_t i = 0; i < inside; ++i) {
            const int frame = range.first + static_cast<int>(i * range.step);
            if (seen.insert(frame).second) chosen.frames.push_back(frame);
        }
    }
    chosen.cut = static_cast<int>(std::min<std::int64_t>(cut, INT32_MAX));
    if (chosen.frames.empty()) {
        throw Failure("all frames asked for lie past the end of the job, which is frame " +
                      std::to_string(end));
    }
    return chosen;
}

std::string cutNote(const ChosenFrames& chosen) {
    if (chosen.cut == 0) return "";
    return std::to_string(chosen.cut) + " of the frames asked for lie past frame " +
           std::to_string(chosen.cutAfter) + ", the end of the job, and are left out";
}

}  // namespace program
