#include "looks/cube_refusal.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

#include "looks/words.h"

namespace looks {
namespace {

using Lines = std::vector<std::string_view>;

Lines linesOf(std::string_view text) {
    Lines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
    return lines;
}

std::string_view trimmed(std::string_view line) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = line.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return line.substr(first, line.find_last_not_of(kBlanks) + 1 - first);
}

// The first line at which the parser gives up, from 1: it is asked again and again, with half of
// the lines that are left in question.
std::size_t malformedLine(const std::string& contents, const Lines& lines) {
    std::size_t good = 0;
    std::size_t bad = lines.size();
    while (bad - good > 1) {
        const std::size_t middle = good + (bad - good) / 2;
        const auto length = static_cast<std::size_t>(lines[middle].data() - contents.data());
        tw::Lut3D lut;
        std::string reason;
        tw::parseCube(contents.substr(0, length), lut, &reason);
        (reason == "malformed data line" ? bad : good) = middle;
    }
    return bad;
}

// So that a message stays one line, whatever the file holds.
std::string quoted(std::string_view line) {
    constexpr std::size_t kLongest = 40;
    std::string text(line.substr(0, kLongest));
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < 0x20 || c >= 0x7F; }, '?');
    return "\"" + text + (line.size() > kLongest ? "...\"" : "\"");
}

Finding fatal(const char* id, std::string words, std::string advice) {
    return {Weight::kFatal, id, std::move(words), std::move(advice)};
}

// What a file is that is no plain text of lines; a finding without an id for one that is.
Finding notPlainText(const std::string& contents, const std::string& reason) {
    const std::string_view start = std::string_view(contents).substr(0, 4);
    if (start.starts_with("\xEF\xBB\xBF")) {
        return fatal("byte-order-mark", reason + ": the text begins with a byte-order mark",
                     "Save it as UTF-8 without the mark.");
    }
    const bool marked = start.starts_with("\xFF\xFE") || start.starts_with("\xFE\xFF");
    const bool zeros = start.size() == 4 && ((start[0] == 0) != (start[1] == 0));
    if (marked || zeros) {
        return fatal("utf-16", reason + ": the text is UTF-16", "Save it as UTF-8.");
    }
    if (contents.find('\n') == std::string::npos && contents.find('\r') != std::string::npos) {
        return fatal("lone-cr", reason + ": the lines end as on classic Mac OS, with a lone CR",
                     "Save it with Unix or Windows line endings.");
    }
    return fatal("", "", "");
}

Finding malformed(const std::string& contents, const std::string& reason) {
    const Lines lines = linesOf(contents);
    const std::size_t number = malformedLine(contents, lines);
    const std::string_view line = trimmed(lines[number - 1]);
    const std::string words =
        reason + ": line " + std::to_string(number) + " reads " + quoted(line);
    const bool digit =
        !line.empty() && std::string_view("+-.0123456789").find(line[0]) != std::string_view::npos;
    if (digit && line.find(',') != std::string_view::npos) {
        return fatal("commas", words, "Write numbers with a full stop, and blanks between them.");
    }
    if (!line.empty() && std::islower(static_cast<unsigned char>(line[0]))) {
        return fatal("lower-case", words,
                     "Write keywords in capitals; if it is no .cube file, "
                     "export the look as one.");
    }
    if (digit) return fatal("short-line", words, "Each line needs three numbers; export it again.");
    return fatal("not-a-cube", words, "This is no .cube file; export the look as one.");
}

std::size_t countNumberLines(const std::string& contents) {
    const Lines lines = linesOf(contents);
    return static_cast<std::size_t>(
        std::count_if(lines.begin(), lines.end(), [](std::string_view line) {
            const std::string_view text = trimmed(line);
            return !text.empty() &&
                   std::string_view("+-.0123456789").find(text[0]) != std::string_view::npos;
        }));
}

Finding wrongCount(const std::string& contents, const std::string& reason) {
    tw::Lut3D lut;
    tw::parseCube(contents, lut, nullptr);
    const std::size_t wanted = tw::latticeFloats(lut.size) / 3;
    return fatal("wrong-count",
                 reason + ": " + std::to_string(countNumberLines(contents)) +
                     " lines of numbers, where LUT_3D_SIZE " + std::to_string(lut.size) +
                     " needs " + std::to_string(wanted),
                 "The file was cut off or edited; export it again.");
}

Finding oneDimension(const std::string& contents, const std::string& reason) {
    if (contents.find("LUT_3D_SIZE") != std::string::npos) {
        return fatal("shaper", reason + ": a 1D LUT stands before the 3D one",
                     "Export it as one 3D LUT without a shaper.");
    }
    return fatal("one-dimension", reason, "Export it as a 3D LUT, with 33 points for instance.");
}

}  // namespace

Finding explainRefusal(const std::string& contents, const std::string& reason) {
    if (contents.empty()) return fatal("empty", "the file is empty", "Export it again.");
    if (Finding other = notPlainText(contents, reason); !other.id.empty()) return other;
    if (reason == "malformed data line") return malformed(contents, reason);
    if (reason == "wrong number of values") return wrongCount(contents, reason);
    if (reason == "1D LUTs are not supported") return oneDimension(contents, reason);
    if (reason == "LUT_3D_SIZE out of range") {
        return fatal("size", reason, "Export it with 33 or 65 points an axis.");
    }
    if (reason == "bad DOMAIN_MIN/MAX") {
        return fatal("empty-domain", reason + ": the input range is empty, or lacks numbers",
                     "Export it again, for inputs of 0 to 1.");
    }
    return fatal("no-size", reason + ": the line with the size is missing",
                 "This is no .cube file, or one without its head; export the look as one.");
}

Finding explainDomain(const tw::Lut3D& lut) {
    const Colour low = {lut.domainMin[0], lut.domainMin[1], lut.domainMin[2]};
    const Colour high = {lut.domainMax[0], lut.domainMax[1], lut.domainMax[2]};
    return fatal("domain",
                 "the input range is " + spell(low) + " to " + spell(high) +
                     ", and the effect takes 0..1 only",
                 "Export it again, for inputs of 0 to 1.");
}

}  // namespace looks
