#include "native/src/judge_cube.h"

#include <cstdlib>
#include <string_view>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"

namespace tw {
namespace {

constexpr std::string_view kMatchComment = "# Tintwell match ";

// Exactly 0..1: the stored text carries no domain, so any other one would be lost.
bool hasUnitDomain(const Lut3D& lut) {
    for (int channel = 0; channel < 3; ++channel) {
        if (lut.domainMin[channel] != 0.0f || lut.domainMax[channel] != 1.0f) return false;
    }
    return true;
}

}  // namespace

std::wstring lutNameOf(const std::wstring& path) {
    const std::size_t slash = path.find_last_of(L"\\/");
    const std::wstring name = slash == std::wstring::npos ? path : path.substr(slash + 1);
    return name.substr(0, name.rfind(L'.'));
}

MatchId matchIdOf(const std::string& cubeText) {
    const std::size_t comment = cubeText.find(kMatchComment);
    if (comment == std::string::npos) return 0;
    return std::strtoll(cubeText.c_str() + comment + kMatchComment.size(), nullptr, 10);
}

LutFileResult judgeLutFile(const std::string& contents, const std::wstring& path, LutFile& file,
                           std::string& reason) {
    reason.clear();
    Lut3D lut;
    if (contents.empty() || !parseCube(contents, lut, &reason)) return LutFileResult::kUnreadable;
    if (!hasUnitDomain(lut)) return LutFileResult::kForeignDomain;
    file.text = toEmbeddedText(lut, matchIdOf(contents), toUtf8(lutNameOf(path)));
    file.size = lut.size;
    return LutFileResult::kLoaded;
}

}  // namespace tw
