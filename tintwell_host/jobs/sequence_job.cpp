#include "tintwell_host/jobs/sequence_job.h"

#include <filesystem>
#include <system_error>

#include "tintwell_host/jobs/frame_set.h"
#include "tintwell_host/jobs/sequence.h"

namespace program {
namespace {

bool isOnePicture(const std::string& in) {
    std::error_code unknown;
    return !isSequence(in) || std::filesystem::exists(in, unknown);
}

FrameJob planOne(const std::string& in, const std::string& out, const std::string& frameSet) {
    if (!frameSet.empty()) {
        throw Failure("--frames needs sequences, and '" + in + "' is one file", Exit::kWrongUsage);
    }
    return {{{0, in, out}}, false, ""};
}

ChosenFrames framesOf(const std::string& in, const std::string& frameSet) {
    if (frameSet.empty()) return {existingFrames(in), 0, 0};
    const std::vector<FrameRange> set = parseFrameSet(frameSet);
    return chooseFrames(set, existingFrames(in).back());
}

}  // namespace

FrameJob planFrames(const std::string& in, const std::string& out, const std::string& frameSet) {
    const bool one = isOnePicture(in);
    if (one != !isSequence(out) && !(one && isSequence(in))) {
        throw Failure("'" + in + "' and '" + out +
                          "' must both name a sequence (with %04d, say) or both one file",
                      Exit::kWrongUsage);
    }
    if (one) return planOne(in, out, frameSet);
    const ChosenFrames chosen = framesOf(in, frameSet);
    FrameJob job;
    job.isSequence = true;
    for (const int frame : chosen.frames)
        job.tasks.push_back({frame, frameFile(in, frame), frameFile(out, frame)});
    job.note = cutNote(chosen);
    return job;
}

}  // namespace program
