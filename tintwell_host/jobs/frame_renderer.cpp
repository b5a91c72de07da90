#include "tintwell_host/jobs/frame_renderer.h"

#include <chrono>
#include <exception>
#include <filesystem>
#include <new>

#include "tintwell_host/files/output_file.h"
#include "tintwell_host/jobs/fingerprint.h"
#include "tintwell_host/jobs/render_options.h"

namespace program {
FrameRenderer::FrameRenderer(EffectSession& session, MemoryBudget& memory,
                             const FrameOptions& options, const std::string& out)
    : session_(session), memory_(memory), options_(options), manifest_(out) {}

FrameResult FrameRenderer::render(const FrameTask& task) {
    const auto start = std::chrono::steady_clock::now();
    FrameResult result;
    result.task = task;
    try {
        renderInto(result);
    } catch (const Failure& failure) {
        result.reason = failure.what();
        result.exit = failure.exit();
        result.state = FrameState::kFailed;
    } catch (const std::bad_alloc&) {
        result.reason = "there is not enough memory for '" + task.in + "'";
        result.exit = Exit::kTryAgain;
        result.state = FrameState::kFailed;
    } catch (const std::exception& failure) {
        result.reason = failure.what();
        result.state = FrameState::kFailed;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    result.seconds = taken.count();
    return result;
}

void FrameRenderer::renderInto(FrameResult& result) {
    const std::string& out = result.task.out;
    const std::string input = readText(result.task.in);
    const std::string made = fingerprint({input, options_.madeBy});
    const PictureFacts facts = inspectPicture(result.task.in, input);
    const Depth depth = options_.depth.value_or(facts.depth);
    const MemoryBudget::Share share(memory_, frameBytes(facts.pixels, depth));
    if (options_.skipExisting && isUpToDate(out, made, result.reason)) {
        result.state = FrameState::kSkipped;
        return;
    }
    const Picture graded = session_.render(decodePicture(result.task.in, input, depth));
    const std::string file = encodePicture(out, graded, {options_.compression, made});
    writeWhole(out, file);
    if (options_.skipExisting && !holdsFingerprint(out)) manifest_.add(out, file, made);
    result.state = FrameState::kRendered;
}

bool FrameRenderer::isUpToDate(const std::string& out, const std::string& fingerprint,
                               std::string& reason) {
    std::error_code unknown;
    if (!std::filesystem::exists(out, unknown)) return false;
    try {
        const std::string contents = readText(out);
        if (!hasItsEnd(out, contents)) throw Failure("the end is missing");
        const Picture picture = decodePicture(out, contents, std::nullopt);
        const std::string found =
            holdsFingerprint(out) ? fingerprintOf(picture) : manifest_.find(out, contents);
        if (found == fingerprint) return true;
        reason = "'" + out + "' was made from something else and is made anew";
    } catch (const Failure&) {
        reason = "'" + out + "' is not whole and is made anew";
    }
    return false;
}

}  // namespace program
