#include "effect/render.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

#include "effect/identity.h"
#include "effect/params.h"
#include "effect/stored_lut.h"
#include "effect/suite.h"
#include "native/src/c_locale.h"
#include "native/src/log.h"
#include "native/src/log_on_change.h"
#include "native/src/lut_engine.h"
#include "native/src/never_destroyed.h"

namespace tw_effect {
namespace {

using SharedLut = std::shared_ptr<const tw::Lut3D>;

struct PixelFormat {
    const char* name;  // as the log shows it
    bool isFloat;
    tw::ChannelOrder order;

    int bytesPerPixel() const { return isFloat ? 16 : 4; }
};

constexpr PixelFormat kARGB8{"ARGB8", false, tw::kOrderARGB};
constexpr PixelFormat kBGRA8{"BGRA8u", false, tw::kOrderBGRA};
constexpr PixelFormat kBGRA32f{"BGRA32f", true, tw::kOrderBGRA};

// Null for a format that the effect has not declared. Without the suite Premiere Pro can only mean
// the format it would give a plug-in that never asked.
const PixelFormat* formatOf(const PF_InData& host, PF_LayerDef& output) {
    if (host.appl_id != kPremiere) return &kARGB8;
    PrPixelFormat format = PrPixelFormat_BGRA_4444_8u;
    if (const PixelFormats suite(host.pica_basicP); suite) suite->GetPixelFormat(&output, &format);
    if (format == PrPixelFormat_BGRA_4444_32f) return &kBGRA32f;
    return format == PrPixelFormat_BGRA_4444_8u ? &kBGRA8 : nullptr;
}

void logFailure(const std::string& failure) {
    tw::logLine("Embedded LUT: %s", failure.c_str());
}

// How the log tells of a LUT.
struct LutWords {
    const char* kind;
    long id;
    int size;
};

LutWords wordsOf(const tw::Lut3D* lut) {
    switch (tw::kindOf(lut)) {
        case tw::LutKind::kPattern:
            return {"pattern", static_cast<long>(lut->id), lut->probe};
        case tw::LutKind::kLut:
            return {"embedded", static_cast<long>(lut->id), lut->size};
        default:
            return {"none", 0, 0};
    }
}

void logRender(const PixelFormat& format, const PF_LayerDef& output, const LutWords& lut,
               float amount) {
    char line[200];
    {
        const tw::CLocaleScope cNumbers;
        std::snprintf(line, sizeof line,
                      "Render fmt=%s %dx%d rowbytes=%ld id=%ld amount=%.3f lut=%s %d", format.name,
                      output.width, output.height, static_cast<long>(output.rowbytes), lut.id,
                      static_cast<double>(amount), lut.kind, lut.size);
    }
    // Steady playback leaves one line, not one a frame.
    static tw::NeverDestroyed<tw::LogOnChange> lines("render line");
    lines->log(line);
}

template <typename Image>
Image view(const PF_LayerDef& world, tw::ChannelOrder order) {
    using Sample = decltype(Image::pixels);
    return {reinterpret_cast<Sample>(world.data), world.width, world.height, world.rowbytes, order};
}

// Only the common top-left area is written. Worlds may be one and the same.
void copyThrough(const PF_LayerDef& input, const PF_LayerDef& output, int bytesPerPixel) {
    const int rows = std::min(input.height, output.height);
    const int columns = std::min(input.width, output.width);
    if (rows <= 0 || columns <= 0) return;
    const auto bytes = static_cast<std::size_t>(columns) * static_cast<std::size_t>(bytesPerPixel);
    const auto* from = reinterpret_cast<const std::uint8_t*>(input.data);
    auto* to = reinterpret_cast<std::uint8_t*>(output.data);
    for (std::ptrdiff_t y = 0; y < rows; ++y) {
        std::memmove(to + y * output.rowbytes, from + y * input.rowbytes, bytes);
    }
}

void drawPattern(const PixelFormat& format, int n, const PF_LayerDef& output) {
    if (format.isFloat) {
        tw::fillProbeF(n, view<tw::ImageF>(output, format.order));
    } else {
        tw::fillProbe8(n, view<tw::Image8>(output, format.order));
    }
}

void grade(const PixelFormat& format, const tw::Lut3D& lut, const PF_LayerDef& input,
           const PF_LayerDef& output, float amount) {
    if (format.isFloat) {
        tw::applyF(lut, view<tw::ImageF>(input, format.order),
                   view<tw::ImageF>(output, format.order), amount);
    } else {
        tw::apply8(lut, view<tw::Image8>(input, format.order),
                   view<tw::Image8>(output, format.order), amount);
    }
}

}  // namespace

PF_Err Render(const PF_InData& host, PF_ParamDef* const* params, PF_LayerDef& output) {
    const PF_LayerDef& input = params[kParamInput]->u.ld;
    const auto amount = static_cast<float>(params[kParamAmount]->u.fs_d.value / 100.0);
    const PixelFormat* format = formatOf(host, output);
    if (!format) return PF_Err_UNRECOGNIZED_PARAM_TYPE;

    const SharedLut lut = storedLut(host, params, logFailure);
    logRender(*format, output, wordsOf(lut.get()), amount);

    const tw::LutKind kind = tw::kindOf(lut.get());
    if (kind == tw::LutKind::kPattern) {
        // The pattern is what the panel measures: neither input nor Amount may show in it.
        drawPattern(*format, lut->probe, output);
    } else if (kind == tw::LutKind::kLut && amount > 0.0f) {
        grade(*format, *lut, input, output, amount);
    } else {
        copyThrough(input, output, format->bytesPerPixel());
    }
    return PF_Err_NONE;
}

}  // namespace tw_effect
