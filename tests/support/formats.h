// The pictures that the effect is asked for: which host, which pixels, and what the log calls them.
#pragma once

#include <ostream>
#include <string>

#include "host_sim/values/frame.h"
#include "host_sim/values/personality.h"

namespace twtest {

struct HostFormat {
    const char* name;  // in the log
    bool premiere;
    PrPixelFormat pixels;

    host_sim::Personality personality() const {
        return premiere ? host_sim::premierePro() : host_sim::afterEffects();
    }
};

inline constexpr HostFormat kARGB8{"ARGB8", false, PrPixelFormat_ARGB_4444_8u};
inline constexpr HostFormat kBGRA8{"BGRA8u", true, PrPixelFormat_BGRA_4444_8u};
inline constexpr HostFormat kBGRA32f{"BGRA32f", true, PrPixelFormat_BGRA_4444_32f};

inline void PrintTo(const HostFormat& format, std::ostream* out) {
    *out << format.name;
}

}  // namespace twtest
