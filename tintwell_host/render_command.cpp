#include <cstdio>
#include <numeric>

#include "tintwell_host/cube_file.h"
#include "tintwell_host/failure.h"
#include "tintwell_host/output_file.h"
#include "tintwell_host/progress.h"
#include "tintwell_host/sequence.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

struct Job {
    std::string in;
    std::string out;
};

std::vector<int> framesOf(const RenderOptions& options) {
    if (options.frames.empty()) return existingFrames(options.in);
    const FrameRange range = parseFrameRange(options.frames);
    std::vector<int> frames(static_cast<std::size_t>(range.last - range.first) + 1);
    std::iota(frames.begin(), frames.end(), range.first);
    return frames;
}

std::vector<Job> jobsOf(const RenderOptions& options) {
    if (isSequence(options.in) != isSequence(options.out)) {
        throw Failure("'" + options.in + "' and '" + options.out +
                      "' must both name a sequence (with %04d, say) or both one file");
    }
    if (!isSequence(options.in)) {
        if (!options.frames.empty()) {
            throw Failure("--frames needs sequences, and '" + options.in + "' is one file");
        }
        return {{options.in, options.out}};
    }
    std::vector<Job> jobs;
    for (const int frame : framesOf(options)) {
        jobs.push_back({frameFile(options.in, frame), frameFile(options.out, frame)});
    }
    return jobs;
}

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
    if (options.effect.host == "ae") throw Failure("--gpu needs --host premiere");
    if (options.depth == "8") throw Failure("--gpu renders in float: leave out --depth 8");
}

Depth depthFor(const RenderOptions& options, const std::string& file) {
    if (options.effect.gpu) return Depth::kFloat;
    const bool asTheFile = options.depth.empty() && options.effect.host != "ae";
    return asTheFile ? naturalDepth(file) : chosenDepth(options.depth, options.effect.host);
}

}  // namespace

Depth chosenDepth(const std::string& depth, const std::string& host) {
    if (depth != "float") return Depth::k8;
    if (host == "ae") {
        throw Failure(
            "After Effects gives this effect 8 bits a channel: "
            "use --depth 8, or --host premiere for float");
    }
    return Depth::kFloat;
}

void runRender(const RenderOptions& options) {
    chosenDepth(options.depth, options.effect.host);
    checkGpu(options);
    const std::vector<Job> jobs = jobsOf(options);
    EffectSession session(options.effect);
    takeLook(session, options);
    {
        const Progress progress(jobs.size());
        std::size_t done = 0;
        for (const Job& job : jobs) {
            const Picture picture = readPicture(job.in, depthFor(options, job.in));
            writePicture(job.out, session.render(picture));
            progress.show(++done);
        }
    }
    if (!options.save.empty()) session.save(options.save);
    session.close();
}

}  // namespace program
