#include "tintwell_host/jobs/fingerprint.h"

#include <OpenImageIO/hash.h>

#include <cstdint>
#include <cstdio>

namespace program {
namespace {

std::string digestOf(std::string_view bytes) {
    const auto digest = OIIO::farmhash::Fingerprint128(bytes.data(), bytes.size());
    char text[33];
    std::snprintf(text, sizeof text, "%016llx%016llx",
                  static_cast<unsigned long long>(OIIO::farmhash::Uint128High64(digest)),
                  static_cast<unsigned long long>(OIIO::farmhash::Uint128Low64(digest)));
    return text;
}

}  // namespace

std::string fingerprint(const std::vector<std::string_view>& parts) {
    std::string digests;
    for (const std::string_view part : parts)
        digests += digestOf(part);
    return digestOf(digests);
}

}  // namespace program
