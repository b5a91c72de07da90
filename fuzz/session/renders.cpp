#include <optional>

#include "fuzz/session/pictures.h"
#include "fuzz/session/steps.h"
#include "fuzz/session/violation.h"

namespace session_fuzz {
namespace {

using host_sim::Frame;

PrPixelFormat chooseFormat(SessionState& session, Record& record) {
    constexpr PrPixelFormat kFormats[] = {PrPixelFormat_BGRA_4444_8u, PrPixelFormat_BGRA_4444_32f,
                                          PrPixelFormat_BGRA_4444_16u, PrPixelFormat_ARGB_4444_8u};
    const PrPixelFormat format = kFormats[record.below(4)];
    return session.isPremiere() ? format : PrPixelFormat_ARGB_4444_8u;
}

// Nothing: the format is refused.
std::optional<Reading> readingOf(SessionState& session, PrPixelFormat format) {
    if (!session.isPremiere()) return Reading{false, tw::kOrderARGB};
    const Reference& reference = session.reference;
    const bool isKnown = !reference.noPixelFormats && reference.pixelFormatError == 0;
    if (!isKnown || format == PrPixelFormat_BGRA_4444_8u) return Reading{false, tw::kOrderBGRA};
    if (format == PrPixelFormat_BGRA_4444_32f) return Reading{true, tw::kOrderBGRA};
    return std::nullopt;
}

host_sim::RenderSettings makeSettings(Record& record) {
    host_sim::RenderSettings settings;
    settings.time = record.byte() - 100;
    settings.timeScale = record.byte();
    return settings;
}

void requirePicture(const Frame& expected, const Frame& output) {
    if (const auto place = output.changeOutside(expected))
        violation("a byte outside the picture was written, at " + *place);
    require(output.sameMemory(expected), "the picture is not the engine's");
}

}  // namespace

void render(SessionState& session, Record& record) {
    const Applied* const one = session.chooseInstance(record);
    if (one == nullptr) return;
    const PrPixelFormat format = chooseFormat(session, record);
    const bool inPlace = record.flag();
    const bool isWild = record.flag();
    Frame input = makeFrame(record, format);
    fillWithNoise(input, record.byte(), isWild);
    Frame output = inPlace ? input : makeFrame(record, format);
    const host_sim::RenderSettings settings = makeSettings(record);

    Frame expected = output;
    const std::optional<Reading> reading = readingOf(session, format);
    if (reading) {
        const auto lut = session.reference.lutOf(one->lut);
        const auto amount = static_cast<float>(one->amount / 100.0);
        paint(*reading, lut, amount, inPlace ? expected : input, expected);
    }
    const PF_Err wanted = reading ? PF_Err_NONE : PF_Err_UNRECOGNIZED_PARAM_TYPE;
    const host_sim::CommandResult result =
        one->instance->render(inPlace ? output : input, output, settings);
    require(result.error == wanted, "RENDER's error is wrong");
    requirePicture(expected, output);
}

}  // namespace session_fuzz
