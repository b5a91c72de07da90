#include "tintwell_host/clips/clip_job.h"
#include "tintwell_host/files/failure.h"

namespace program {
namespace {

void refuseIf(bool isWrong, const std::string& sentence) {
    if (isWrong) throw Failure(sentence, Exit::kWrongUsage);
}

}  // namespace

void checkClipOptions(const RenderOptions& options) {
    const bool in = isClip(options.in);
    const bool out = isClip(options.out);
    refuseIf(!options.codec.empty() && !out, "--codec is for clips that are written");
    refuseIf(options.rate && (in || !out), "--rate is for clips that are made of a sequence");
    refuseIf(options.noAudio && !(in && out), "--no-audio is for clips that are made of a clip");
    refuseIf(options.strict && !in, "--strict is for clips that are read");
    refuseIf(!options.compression.empty() && out, "clips have a --codec in place of --compression");
    refuseIf(options.skipExisting && (in || out), "--skip-existing needs sequences, and '" +
                                                      (in ? options.in : options.out) +
                                                      "' is one file");
}

}  // namespace program
