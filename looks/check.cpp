#include "looks/check.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "looks/cube_refusal.h"
#include "looks/notes.h"
#include "native/src/judge_cube.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"

namespace looks {
namespace {

void add(Check& check, std::vector<Finding> findings) {
    std::move(findings.begin(), findings.end(), std::back_inserter(check.findings));
}

void addFatal(Check& check, const char* id, std::string words, std::string advice) {
    check.findings.push_back({Weight::kFatal, id, std::move(words), std::move(advice)});
}

Check finished(Check check) {
    std::stable_sort(check.findings.begin(), check.findings.end(),
                     [](const Finding& a, const Finding& b) { return a.weight < b.weight; });
    check.works = std::none_of(check.findings.begin(), check.findings.end(),
                               [](const Finding& f) { return f.weight == Weight::kFatal; });
    return check;
}

// The text of a .cube file that the reader refuses: stored all the same, and then not shown.
void explainUnreadableText(Check& check, const std::string& reason) {
    const std::string shown =
        ": the LUT button takes the file, then says \"Choose a LUT\" and the "
        "picture passes";
    if (check.lut.size > tw::kMostTextPoints) {
        addFatal(check, "too-many-points",
                 reason + shown + ", as " + std::to_string(check.lut.size) +
                     " points an axis are more than " + std::to_string(tw::kMostTextPoints),
                 "Export it with 33 or 65 points an axis.");
    } else {
        addFatal(check, "long-name",
                 reason + shown + ", as the file's name is too long for the text",
                 "Give the file a shorter name.");
    }
}

void checkStored(Check& check, const std::string& text) {
    tw::Lut3D stored;
    std::string reason;
    if (!tw::parseEmbeddedText(text, stored, &reason)) {
        explainUnreadableText(check, reason);
        return;
    }
    check.precision = precisionOf(check.lut, stored);
    add(check, notesOf(*check.precision));
    if (!std::all_of(stored.data.begin(), stored.data.end(),
                     [](float v) { return std::isfinite(v); })) {
        addFatal(check, "not-finite", "infinite values leave the text without any usable one",
                 "The look was computed wrongly; export it again.");
    }
    if (stored.name != check.lut.name) {
        check.findings.push_back(
            {Weight::kTrap, "name-lost",
             "the name \"" + check.lut.name + "\" reads back as \"" + stored.name + "\"",
             "Give the file another name."});
    }
    if (stored.name.empty()) {
        check.findings.push_back(
            {Weight::kNote, "no-name",
             "without a name the LUT button says \"From Tintwell (Apply again to name it)\"", ""});
    }
}

}  // namespace

Check checkCube(const std::string& contents, const std::wstring& path) {
    Check check;
    tw::LutFile file;
    std::string reason;
    const tw::LutFileResult result = tw::judgeLutFile(contents, path, file, reason);
    if (result == tw::LutFileResult::kUnreadable) {
        check.findings.push_back(explainRefusal(contents, reason));
        return finished(std::move(check));
    }
    tw::parseCube(contents, check.lut, nullptr);
    check.lut.name = tw::toUtf8(tw::lutNameOf(path));
    check.lut.id = tw::matchIdOf(contents);
    add(check, notesOfTags(contents));
    if (result == tw::LutFileResult::kForeignDomain) {
        check.findings.push_back(explainDomain(check.lut));
    } else {
        check.facts = factsOf(check.lut);
        add(check, notesOf(*check.facts));
        checkStored(check, file.text);
    }
    return finished(std::move(check));
}

Check checkText(const std::string& text) {
    Check check;
    std::string reason;
    if (!tw::parseEmbeddedText(text, check.lut, &reason)) {
        check.lut = tw::Lut3D{};
        addFatal(check, "unreadable", reason, "Apply the look again.");
    } else if (tw::kindOf(&check.lut) == tw::LutKind::kNone) {
        addFatal(check, "none", "the text says that there is no look", "");
    } else if (tw::kindOf(&check.lut) == tw::LutKind::kPattern) {
        addFatal(check, "pattern",
                 "the text asks for the calibration pattern of size " +
                     std::to_string(check.lut.probe) + ", which is no look",
                 "");
    } else {
        check.facts = factsOf(check.lut);
        add(check, notesOf(*check.facts));
    }
    return finished(std::move(check));
}

}  // namespace looks
