#include <cstdio>
#include <filesystem>

#include "tintwell_host/clips/clip_job.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/jobs/fingerprint.h"
#include "tintwell_host/jobs/frame_pipeline.h"
#include "tintwell_host/jobs/frame_renderer.h"
#include "tintwell_host/jobs/job_record.h"
#include "tintwell_host/jobs/stop_request.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

// Line ends that an editor or `encode` left after the text are not part of it.
std::string trimmed(std::string text) {
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    return text;
}

void takeLook(EffectSession& session, const RenderOptions& options) {
    if (!options.lut.empty()) session.scan(textFromCube(options.lut), options.lut);
    if (!options.text.empty()) session.scan(trimmed(readText(options.text)), options.text);
    if (options.amount) session.setAmount(*options.amount);
}

// GPU frames are Premiere Pro's and hold floats.
void checkGpu(const RenderOptions& options) {
    if (!options.effect.gpu) return;
    if (options.effect.host == "ae")
        throw Failure("--gpu needs --host premiere", Exit::kWrongUsage);
    if (options.depth == "8") {
        throw Failure("--gpu renders in float: leave out --depth 8", Exit::kWrongUsage);
    }
}

// All that a frame's file depends on, besides its input.
std::string madeBy(EffectSession& session, const RenderOptions& options) {
    const std::string amount = std::to_string(session.amount());
    const std::string version = std::to_string(session.host().setUp().my_version);
    const std::string extension = std::filesystem::path(options.out).extension();
    return fingerprint({version, session.storedText(), amount, options.effect.host, options.depth,
                        options.effect.gpu ? "gpu" : "", extension, options.compression});
}

void finish(EffectSession& session, const RenderOptions& options) {
    if (!options.save.empty()) session.save(options.save);
    session.close();
}

bool goesOn(const FrameResult& result) {
    return result.state != FrameState::kFailed || result.exit != Exit::kTryAgain;
}

void renderJob(EffectSession& session, const FrameJob& job, const RenderOptions& options) {
    MemoryBudget memory(memoryBytes(options));
    FrameRenderer renderer(
        session, memory,
        {depthFor(options), options.compression, options.skipExisting, madeBy(session, options)},
        options.out);
    const auto progress = options.progress == "lines" ? ProgressKind::kLines : ProgressKind::kBar;
    const StopRequest stop;
    JobRecord record(job.tasks.size(), job.isSequence, progress);
    std::size_t taken = 0;
    runFrames(
        job.tasks, frameThreads(options.threads), [] { return StopRequest::signal() == 0; },
        [&](const FrameTask& task) { return renderer.render(task); },
        [&](const FrameResult& result) {
            record.add(result);
            ++taken;
            return goesOn(result);
        });
    const int signal = taken < job.tasks.size() ? StopRequest::signal() : 0;
    if (!options.report.empty()) record.writeReport(options.report, signal);
    record.finish(signal);
}

}  // namespace

void runRender(const RenderOptions& options) {
    chosenDepth(options.depth, options.effect.host);
    checkGpu(options);
    checkClipOptions(options);
    if (!isClip(options.out)) checkCompression(options.out, options.compression);
    if (isClip(options.in) || isClip(options.out)) {
        EffectSession session(options.effect);
        takeLook(session, options);
        renderClip(session, options);
        finish(session, options);
        return;
    }
    const FrameJob job = planFrames(options.in, options.out, options.frames);
    if (!job.note.empty()) std::fprintf(stderr, "tintwell-host: %s\n", job.note.c_str());
    EffectSession session(options.effect);
    takeLook(session, options);
    if (job.isSequence) removeLeftovers(options.out);
    renderJob(session, job, options);
    finish(session, options);
}

}  // namespace program
