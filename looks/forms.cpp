#include "looks/forms.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "native/src/c_locale.h"
#include "native/src/judge_cube.h"
#include "native/src/lut_text.h"

namespace looks {
namespace {

// Quotes and control characters would end the title early.
std::string titleOf(const tw::Lut3D& lut) {
    std::string title = lut.name;
    std::replace_if(
        title.begin(), title.end(),
        [](unsigned char c) { return c == '"' || c < 0x20 || c == 0x7f; }, '_');
    return title;
}

// Of the encoded name in a TWLUT3 text.
std::size_t nameLengthOf(const std::string& text) {
    const std::size_t name = text.find(' ', text.find(' ') + 1) + 1;
    return text.find(' ', name) - name;
}

std::string whyNoText(const tw::Lut3D& lut, const std::string& text) {
    if (lut.name == "-") return "a look cannot be named '-': that stands for no name";
    if (const std::size_t length = nameLengthOf(text); length > tw::kLongestTextName) {
        return "the name is too long: it takes " + std::to_string(length) +
               " characters when encoded, and may take " + std::to_string(tw::kLongestTextName);
    }
    tw::Lut3D back;
    std::string reason;
    if (!tw::parseEmbeddedText(text, back, &reason)) return reason;
    const auto finite = [](float value) { return std::isfinite(value); };
    if (!std::all_of(back.data.begin(), back.data.end(), finite))
        return "the values of the look span too wide a range to be stored";
    return {};
}

}  // namespace

bool textFromCube(const std::string& contents, const std::wstring& path, std::string& text,
                  std::string& reason) {
    if (contents.empty()) {
        reason = "the file is empty";
        return false;
    }
    tw::LutFile file;
    switch (tw::judgeLutFile(contents, path, file, reason)) {
        case tw::LutFileResult::kUnreadable:
            return false;
        case tw::LutFileResult::kForeignDomain:
            reason = "its domain is other than 0..1";
            return false;
        case tw::LutFileResult::kLoaded:
            break;
    }
    text = std::move(file.text);
    return true;
}

std::string writeCube(const tw::Lut3D& lut) {
    const tw::CLocaleScope cNumbers;
    std::string text = "TITLE \"" + titleOf(lut) + "\"\n";
    if (lut.id != 0) text += "# Tintwell match " + std::to_string(lut.id) + "\n";
    text += "LUT_3D_SIZE " + std::to_string(lut.size) + "\n";
    char line[64];
    for (std::size_t at = 0; at < lut.data.size(); at += 3) {
        std::snprintf(line, sizeof line, "%.9g %.9g %.9g\n", static_cast<double>(lut.data[at]),
                      static_cast<double>(lut.data[at + 1]), static_cast<double>(lut.data[at + 2]));
        text += line;
    }
    return text;
}

bool writeText(const tw::Lut3D& lut, std::string& text, std::string& reason) {
    text = tw::toEmbeddedText(lut, lut.id, lut.name);
    reason = whyNoText(lut, text);
    return reason.empty();
}

}  // namespace looks
