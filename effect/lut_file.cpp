#include "effect/lut_file.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "native/src/file.h"
#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"

namespace tw_effect {
namespace {

constexpr std::size_t kReadBytes = 65536;
constexpr std::string_view kMatchComment = "# Tintwell match ";

std::string readWhole(const std::wstring& path) {
    std::string contents;
    const tw::File file(tw::openFile(path, "rb"));
    if (!file) return contents;
    char buffer[kReadBytes];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) {
        contents.append(buffer, count);
    }
    return contents;
}

// Exactly 0..1: the stored text carries no domain, so any other one would be lost.
bool hasUnitDomain(const tw::Lut3D& lut) {
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

long matchIdOf(const std::string& cubeText) {
    const std::size_t comment = cubeText.find(kMatchComment);
    if (comment == std::string::npos) return 0;
    return std::strtol(cubeText.c_str() + comment + kMatchComment.size(), nullptr, 10);
}

LutFileResult judgeLutFile(const std::string& contents, const std::wstring& path, LutFile& file,
                           std::string& reason) {
    reason.clear();
    tw::Lut3D lut;
    if (contents.empty() || !tw::parseCube(contents, lut, &reason))
        return LutFileResult::kUnreadable;
    if (!hasUnitDomain(lut)) return LutFileResult::kForeignDomain;
    file.text = tw::toEmbeddedText(lut, matchIdOf(contents), tw::toUtf8(lutNameOf(path)));
    file.size = lut.size;
    return LutFileResult::kLoaded;
}

LutFileResult loadLutFile(const std::wstring& path, LutFile& file, std::string& reason) {
    return judgeLutFile(readWhole(path), path, file, reason);
}

}  // namespace tw_effect
