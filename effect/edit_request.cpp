#include "effect/edit_request.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <string>

#include "effect/alert.h"
#include "effect/edit_request_line.h"
#include "effect/stored_lut.h"
#include "native/src/file.h"
#include "native/src/log.h"
#include "native/src/paths.h"

namespace tw_effect {
namespace {

constexpr wchar_t kNoMatch[] =
    L"This LUT wasn't made in the Tintwell panel (or was made before Tintwell kept its matches), "
    L"so there is no match to open. Make one in the panel and press Apply.";

std::int64_t millisecondsNow() {
    using std::chrono::duration_cast, std::chrono::milliseconds;
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return duration_cast<milliseconds>(sinceEpoch).count();
}

void writeRequest(const std::string& line) {
    const tw::File file(tw::openFile(tw::dataPath(L"edit-request.json"), "wb"));
    if (file) std::fwrite(line.data(), 1, line.size(), file.get());
}

}  // namespace

PF_Err RequestEdit(const PF_InData& host, PF_ParamDef* const* params) {
    const auto lut = storedLut(host, params);
    if (!lut || lut->id <= 0) {
        tw::logLine("Edit LUT: no match ID");
        Alert(kNoMatch, false);
        return PF_Err_NONE;
    }
    writeRequest(editRequestLine(lut->id, lut->name, millisecondsNow()));
    tw::logLine("Edit LUT: requested match %ld (%s)", static_cast<long>(lut->id),
                lut->name.c_str());
    return PF_Err_NONE;
}

}  // namespace tw_effect
