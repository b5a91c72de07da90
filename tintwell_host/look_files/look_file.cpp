#include "tintwell_host/look_files/look_file.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <fstream>
#include <optional>

#include "looks/look_list.h"
#include "looks/words.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/look_files/look_search.h"
#include "tintwell_host/look_files/table.h"

namespace program {
namespace {

bool isCube(const std::string& file) {
    std::string end = file.size() < 5 ? "" : file.substr(file.size() - 5);
    std::ranges::transform(end, end.begin(), [](unsigned char c) { return std::tolower(c); });
    return end == ".cube";
}

// Whether the file is a TWLUT text from its first byte on, so that it is nothing else.
bool isText(const std::string& file) {
    char start[16];
    std::ifstream in(file, std::ios::binary);
    in.read(start, sizeof start);
    return !tw::embeddedText(start, static_cast<unsigned long>(in.gcount())).empty();
}

looks::Check checkContents(const std::string& contents, const std::wstring& path) {
    const std::string text = tw::embeddedText(contents.data(), contents.size());
    return text.empty() ? looks::checkCube(contents, path) : looks::checkText(text);
}

// The looks within a file; texts that cannot be read as one finding for each reason. False when
// there is nothing of the kind.
bool checkFound(const std::string& file, const std::function<void(const CheckedLook&)>& take) {
    LookSearch search;
    std::size_t looks = 0;
    search.list = looks::LookList([&](const tw::Lut3D& lut, const std::string& text) {
        if (tw::kindOf(&lut) != tw::LutKind::kLut) return;
        ++looks;
        take({file + ", \"" + lut.name + "\"", looks::checkText(text)});
    });
    searchLooks(file, search);
    for (const std::string& warning : search.warnings)
        std::fprintf(stderr, "tintwell-host: %s\n", plain(warning).c_str());
    for (const looks::UnreadableText& unreadable : search.list.unreadable()) {
        CheckedLook texts{file, {}};
        texts.check.findings.push_back(
            {looks::Weight::kFatal, "unreadable",
             unreadable.reason + " (" + looks::spell(unreadable.found.count, "text", "texts") + ")",
             "Apply the look again."});
        take(texts);
    }
    if (looks == 0 && !search.list.looks().empty()) take({file, looks::checkText("TWLUT0")});
    return !search.list.looks().empty() || !search.list.unreadable().empty();
}

}  // namespace

void checkFile(const std::string& file, const std::function<void(const CheckedLook&)>& take) {
    const bool whole = file == "-" || isCube(file) || isText(file);
    if (whole || !checkFound(file, take)) {
        take({file, checkContents(readText(file), tw::fromUtf8(file))});
    }
}

looks::Check onlyLook(const std::string& file) {
    std::optional<looks::Check> only;
    std::size_t count = 0;
    std::string names;
    checkFile(file, [&](const CheckedLook& look) {
        if (count++ == 0) only = look.check;
        if (count <= 10) names += (names.empty() ? "\"" : ", \"") + look.check.lut.name + "\"";
    });
    if (count > 1) {
        throw Failure("'" + file + "' holds " + std::to_string(count) + " looks, such as " +
                      plain(names) + "; write them into files with looks --extract");
    }
    if (!only->works) throw Failure("cannot use '" + file + "': " + only->findings.front().words);
    return *only;
}

}  // namespace program
