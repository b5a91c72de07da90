#include "tintwell_host/clips/clip_job.h"

#include <tbb/global_control.h>
#include <tbb/parallel_pipeline.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <new>

#include "tintwell_host/clips/frame_source.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/jobs/frame_pipeline.h"
#include "tintwell_host/jobs/job_record.h"
#include "tintwell_host/jobs/sequence.h"
#include "tintwell_host/jobs/stop_request.h"

namespace program {
namespace {

std::unique_ptr<FrameSource> openSource(const RenderOptions& options) {
    if (isClip(options.in)) return openClipSource(options);
    if (isSequence(options.in)) return openSequenceSource(options);
    throw Failure("'" + options.in + "' is neither a clip nor a sequence", Exit::kWrongUsage);
}

std::unique_ptr<ClipWriter> openWriter(const FrameSource& source, const RenderOptions& options) {
    if (!isClip(options.out)) {
        if (isSequence(options.out)) return nullptr;
        throw Failure("'" + options.out + "' is neither a clip nor a sequence", Exit::kWrongUsage);
    }
    ClipShape shape = source.shape();
    shape.withSound = shape.withSound && !options.noAudio;
    return std::make_unique<ClipWriter>(options.out, options.codec, shape);
}

void grade(ClipItem& item, EffectSession& session, const FrameSource& source,
           const ClipWriter* writer, const RenderOptions& options) {
    if (!item.isVideo) return;
    const Picture graded = session.render(source.picture(item));
    if (writer == nullptr) {
        writePicture(item.task.out, graded, {options.compression, ""});
    } else {
        item.frame = frameOf(graded, writer->format(), writer->colour());
    }
}

void write(ClipItem& item, ClipWriter* writer, JobRecord& record) {
    if (writer != nullptr) {
        for (const AvPacket& packet : item.sound)
            writer->writeSound(*packet);
        if (item.isVideo) writer->writeFrame(*item.frame, item.time, item.duration);
    }
    if (!item.isVideo) return;
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - item.start;
    record.add({item.task, FrameState::kRendered, taken.count(), "", Exit::kWrongInput});
}

// Those that are graded, and two that are read and written meanwhile, as far as memory goes.
std::size_t framesInFlight(const ClipShape& shape, int threads, const RenderOptions& options) {
    const std::int64_t frame = std::max<std::int64_t>(
        frameBytes(static_cast<std::int64_t>(shape.width) * shape.height, shape.depth), 1);
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(memoryBytes(options) / frame, 1, threads + 2));
}

// False when a signal came before the source's end. Throws Failure.
bool runItems(EffectSession& session, const RenderOptions& options, FrameSource& source,
              ClipWriter* writer, JobRecord& record) {
    bool ended = false;
    const auto begin = [&](tbb::flow_control& control) -> ItemPointer {
        const bool goesOn = StopRequest::signal() == 0;
        ItemPointer item = goesOn ? source.next() : nullptr;
        if (!item) control.stop();
        ended = goesOn && !item;
        return item;
    };
    const auto work = [&](const ItemPointer& item) {
        grade(*item, session, source, writer, options);
        return item;
    };
    const auto end = [&](const ItemPointer& item) { write(*item, writer, record); };
    const int threads = frameThreads(options.threads);
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism,
                                    static_cast<std::size_t>(threads));
    using tbb::filter_mode;
    tbb::parallel_pipeline(
        framesInFlight(source.shape(), threads, options),
        tbb::make_filter<void, ItemPointer>(filter_mode::serial_in_order, begin) &
            tbb::make_filter<ItemPointer, ItemPointer>(filter_mode::parallel, work) &
            tbb::make_filter<ItemPointer, void>(filter_mode::serial_in_order, end));
    return ended;
}

// Runs them to the clip's end. Returns the signal that came before it, 0 for none. Throws Failure.
int runToTheEnd(EffectSession& session, const RenderOptions& options, FrameSource& source,
                ClipWriter* writer, JobRecord& record) {
    if (!runItems(session, options, source, writer, record)) return StopRequest::signal();
    source.finish(options.strict);
    if (writer != nullptr) writer->finish();
    return 0;
}

}  // namespace

void tell(const std::string& line) {
    if (!line.empty()) std::fprintf(stderr, "tintwell-host: %s\n", line.c_str());
}

void renderClip(EffectSession& session, const RenderOptions& options) {
    av_log_set_level(AV_LOG_QUIET);
    removeLeftovers(options.out);
    const StopRequest stop;
    const std::unique_ptr<FrameSource> source = openSource(options);
    const std::unique_ptr<ClipWriter> writer = openWriter(*source, options);
    JobRecord record(source->frames(), true,
                     options.progress == "lines" ? ProgressKind::kLines : ProgressKind::kBar);
    int signal = 0;
    try {
        signal = runToTheEnd(session, options, *source, writer.get(), record);
    } catch (const Failure& failure) {
        record.fail(failure);
    } catch (const std::bad_alloc&) {
        record.fail(
            Failure("there is not enough memory for '" + options.in + "'", Exit::kTryAgain));
    }
    if (!options.report.empty()) record.writeReport(options.report, signal);
    record.finish(signal);
}

}  // namespace program
