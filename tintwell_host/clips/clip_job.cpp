#include "tintwell_host/clips/clip_job.h"

#include <tbb/global_control.h>
#include <tbb/parallel_pipeline.h>

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <optional>
#include <set>

#include "tintwell_host/clips/clip_writer.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/jobs/frame_pipeline.h"
#include "tintwell_host/jobs/frame_set.h"
#include "tintwell_host/jobs/job_record.h"
#include "tintwell_host/jobs/sequence.h"
#include "tintwell_host/jobs/stop_request.h"

namespace program {
namespace {

using Clock = std::chrono::steady_clock;

// One frame on its way: decoded, then graded, then in the output's own form.
struct Item {
    FrameTask task;
    AvFrame frame;
    std::optional<Picture> picture;
    std::vector<AvPacket> sound;
    std::int64_t time = 0;
    std::int64_t duration = 0;
    bool isVideo = true;
    Clock::time_point start = Clock::now();
};
using ItemPointer = std::shared_ptr<Item>;

// What every kind of input gives: the next item, or null at the end.
class Source {
public:
    virtual ~Source() = default;
    virtual ItemPointer next() = 0;
    // The item's picture. Threads: any.
    virtual Picture picture(Item& item) const = 0;
    virtual ClipShape shape() const = 0;
    virtual std::size_t frames() const = 0;
    // Throws Failure for damage that was asked to be one.
    virtual void finish(bool strict) const = 0;
};

class ClipSource : public Source {
public:
    ClipSource(const RenderOptions& options, std::optional<Depth> depth)
        : in_(options.in), out_(options.out), reader_(options.in) {
        const AVCodecParameters& video = *reader_.video().codecpar;
        colour_ = colourOf(video);
        const auto format = static_cast<AVPixelFormat>(video.format);
        depth_ = depth.value_or(depthOf(format));
        const int frames = reader_.frames();
        if (!options.frames.empty()) {
            const ChosenFrames chosen =
                chooseFrames(parseFrameSet(options.frames), frames > 0 ? frames : INT_MAX - 1);
            wanted_.emplace(chosen.frames.begin(), chosen.frames.end());
        }
        if (colour_.isAssumed) {
            std::fprintf(stderr,
                         "tintwell-host: '%s' does not say its colour matrix: %s is taken\n",
                         in_.c_str(), av_color_space_name(colour_.matrix));
        }
    }

    ItemPointer next() override {
        auto item = std::make_shared<Item>();
        ClipFrame read;
        while (reader_.read(read)) {
            for (AvPacket& packet : read.sound)
                item->sound.push_back(std::move(packet));
            item->isVideo = read.frame != nullptr;
            if (item->isVideo && wanted_ && !wanted_->contains(read.number)) continue;
            if (item->isVideo) take(*item, read);
            return item;
        }
        return nullptr;
    }

    Picture picture(Item& item) const override { return pictureOf(*item.frame, colour_, depth_); }

    ClipShape shape() const override {
        const AVCodecParameters& video = *reader_.video().codecpar;
        ClipShape shape;
        shape.width = video.width;
        shape.height = video.height;
        shape.depth = depth_;
        shape.hasAlpha = hasAlpha(static_cast<AVPixelFormat>(video.format));
        shape.rate = reader_.rate();
        shape.timeBase = reader_.video().time_base;
        shape.colour = colour_;
        shape.source = &reader_;
        shape.withSound = !wanted_;
        return shape;
    }

    std::size_t frames() const override {
        return wanted_ ? wanted_->size() : static_cast<std::size_t>(reader_.frames());
    }

    void finish(bool strict) const override {
        const std::vector<int>& damaged = reader_.damaged();
        if (damaged.empty()) return;
        std::string line = std::to_string(damaged.size()) + " frames of '" + in_ + "' are damaged:";
        for (const int number : damaged)
            line += " " + std::to_string(number);
        if (strict) throw Failure(line);
        std::fprintf(stderr, "tintwell-host: %s\n", line.c_str());
    }

private:
    void take(Item& item, ClipFrame& read) {
        AVFrame& frame = *read.frame;
        const std::int64_t step =
            av_rescale_q(1, av_inv_q(reader_.rate()), reader_.video().time_base);
        const bool timed = frame.best_effort_timestamp != AV_NOPTS_VALUE;
        const std::int64_t time = timed ? frame.best_effort_timestamp : next_;
        if (wanted_ && !offset_) offset_ = time;
        item.time = time - offset_.value_or(0);
        item.duration = frame.pkt_duration > 0 ? frame.pkt_duration : step;
        next_ = time + item.duration;
        item.task = {read.number, in_, frameFile(out_, read.number)};
        item.frame = std::move(read.frame);
    }

    std::string in_;
    std::string out_;
    ClipReader reader_;
    ClipColour colour_;
    Depth depth_;
    std::optional<std::set<int>> wanted_;
    std::optional<std::int64_t> offset_;
    std::int64_t next_ = 0;
};

class SequenceSource : public Source {
public:
    SequenceSource(const RenderOptions& options, std::optional<Depth> depth)
        : in_(options.in), out_(options.out), frames_(existingFrames(options.in)) {
        if (!options.frames.empty()) {
            frames_ = chooseFrames(parseFrameSet(options.frames), frames_.back()).frames;
        }
        const std::string first = frameFile(in_, frames_.front());
        const Picture picture = decodePicture(first, readText(first), depth);
        shape_.width = picture.width;
        shape_.height = picture.height;
        shape_.depth = picture.depth;
        shape_.hasAlpha = picture.hasAlpha;
        shape_.rate = av_d2q(options.rate, 1001000);
        shape_.timeBase = av_inv_q(shape_.rate);
        shape_.colour.matrix = usualMatrix(picture.width, picture.height);
    }

    ItemPointer next() override {
        if (next_ == frames_.size()) return nullptr;
        auto item = std::make_shared<Item>();
        const int frame = frames_[next_];
        item->task = {frame, frameFile(in_, frame), out_};
        item->time = static_cast<std::int64_t>(next_++);
        item->duration = 1;
        return item;
    }

    Picture picture(Item& item) const override {
        const std::string& file = item.task.in;
        Picture picture = decodePicture(file, readText(file), shape_.depth);
        if (picture.width != shape_.width || picture.height != shape_.height) {
            throw Failure("cannot use '" + file + "': its size is not that of the first frame");
        }
        return picture;
    }

    ClipShape shape() const override { return shape_; }
    std::size_t frames() const override { return frames_.size(); }
    void finish(bool /*strict*/) const override {}

private:
    std::string in_;
    std::string out_;
    std::vector<int> frames_;
    ClipShape shape_;
    std::size_t next_ = 0;
};

std::unique_ptr<Source> openSource(const RenderOptions& options) {
    const std::optional<Depth> depth = depthFor(options);
    if (isClip(options.in)) return std::make_unique<ClipSource>(options, depth);
    if (isSequence(options.in)) return std::make_unique<SequenceSource>(options, depth);
    throw Failure("'" + options.in + "' is neither a clip nor a sequence", Exit::kWrongUsage);
}

std::unique_ptr<ClipWriter> openWriter(const Source& source, const RenderOptions& options) {
    if (!isClip(options.out)) {
        if (isSequence(options.out)) return nullptr;
        throw Failure("'" + options.out + "' is neither a clip nor a sequence", Exit::kWrongUsage);
    }
    ClipShape shape = source.shape();
    shape.withSound = shape.withSound && !options.noAudio;
    return std::make_unique<ClipWriter>(options.out, options.codec, shape);
}

void grade(Item& item, EffectSession& session, const Source& source, const ClipWriter* writer,
           const RenderOptions& options) {
    if (!item.isVideo) return;
    const Picture graded = session.render(source.picture(item));
    if (writer == nullptr) {
        writePicture(item.task.out, graded, {options.compression, ""});
    } else {
        item.frame = frameOf(graded, writer->format(), writer->colour());
    }
}

void write(Item& item, ClipWriter* writer, JobRecord& record) {
    if (writer != nullptr) {
        for (const AvPacket& packet : item.sound)
            writer->writeSound(*packet);
        if (item.isVideo) writer->writeFrame(*item.frame, item.time, item.duration);
    }
    if (!item.isVideo) return;
    const std::chrono::duration<double> taken = Clock::now() - item.start;
    record.add({item.task, FrameState::kRendered, taken.count(), "", Exit::kWrongInput});
}

void checkOptions(const RenderOptions& options) {
    if (options.skipExisting) {
        throw Failure("--skip-existing needs sequences: a clip is one file", Exit::kWrongUsage);
    }
    if (!isClip(options.out)) checkCompression(options.out, options.compression);
    if (isClip(options.out) && !options.compression.empty()) {
        throw Failure("clips have a --codec in place of --compression", Exit::kWrongUsage);
    }
}

// Those that are graded, and two that are read and written meanwhile, as far as memory goes.
std::size_t framesInFlight(const ClipShape& shape, int threads, const RenderOptions& options) {
    const std::int64_t frame = std::max<std::int64_t>(
        frameBytes(static_cast<std::int64_t>(shape.width) * shape.height, shape.depth), 1);
    return static_cast<std::size_t>(
        std::clamp<std::int64_t>(memoryBytes(options) / frame, 1, threads + 2));
}

}  // namespace

void renderClip(EffectSession& session, const RenderOptions& options) {
    checkOptions(options);
    av_log_set_level(AV_LOG_QUIET);
    const StopRequest stop;
    const std::unique_ptr<Source> source = openSource(options);
    const std::unique_ptr<ClipWriter> writer = openWriter(*source, options);
    JobRecord record(source->frames(), true,
                     options.progress == "lines" ? ProgressKind::kLines : ProgressKind::kBar);
    const int threads = frameThreads(options.threads);
    const tbb::global_control limit(tbb::global_control::max_allowed_parallelism,
                                    static_cast<std::size_t>(threads));
    const auto begin = [&](tbb::flow_control& control) -> ItemPointer {
        ItemPointer item = StopRequest::signal() == 0 ? source->next() : nullptr;
        if (!item) control.stop();
        return item;
    };
    const auto work = [&](const ItemPointer& item) {
        grade(*item, session, *source, writer.get(), options);
        return item;
    };
    using tbb::filter_mode;
    tbb::parallel_pipeline(
        framesInFlight(source->shape(), threads, options),
        tbb::make_filter<void, ItemPointer>(filter_mode::serial_in_order, begin) &
            tbb::make_filter<ItemPointer, ItemPointer>(filter_mode::parallel, work) &
            tbb::make_filter<ItemPointer, void>(
                filter_mode::serial_in_order,
                [&](const ItemPointer& item) { write(*item, writer.get(), record); }));
    const int signal = StopRequest::signal();
    if (signal == 0) {
        source->finish(options.strict);
        if (writer) writer->finish();
    }
    if (!options.report.empty()) record.writeReport(options.report, signal);
    record.finish(signal);
}

}  // namespace program
