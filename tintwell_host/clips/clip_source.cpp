#include <algorithm>
#include <climits>
#include <optional>
#include <set>

#include "tintwell_host/clips/clip_job.h"
#include "tintwell_host/clips/frame_source.h"
#include "tintwell_host/jobs/frame_set.h"
#include "tintwell_host/jobs/sequence.h"

namespace program {
namespace {

void complain(const std::string& line, bool strict) {
    if (strict) throw Failure(line);
    tell(line);
}

std::string sizeText(int width, int height) {
    return std::to_string(width) + " x " + std::to_string(height);
}

class ClipSource : public FrameSource {
public:
    explicit ClipSource(const RenderOptions& options)
        : in_(options.in), out_(options.out), reader_(options.in) {
        const AVCodecParameters& video = *reader_.video().codecpar;
        width_ = video.width;
        height_ = video.height;
        colour_ = colourOf(video);
        const auto format = static_cast<AVPixelFormat>(video.format);
        depth_ = depthFor(options).value_or(depthOf(format));
        if (!options.frames.empty()) choose(options.frames);
        if (colour_.isAssumed) {
            tell("'" + in_ + "' does not say its colour matrix: " +
                 av_color_space_name(colour_.matrix) + " is taken");
        }
    }

    // A frame that is not wanted is an item without anything: between two items the job may stop.
    ItemPointer next() override {
        if (wanted_ && reader_.count() >= *wanted_->rbegin()) return nullptr;
        ClipFrame read;
        if (!reader_.read(read)) {
            atEnd_ = true;
            end_ = reader_.count();
            return nullptr;
        }
        auto item = std::make_shared<ClipItem>();
        if (!wanted_) item->sound = std::move(read.sound);
        item->isVideo = read.frame && isWanted(read.number);
        if (item->isVideo) take(*item, read);
        return item;
    }

    Picture picture(const ClipItem& item) const override {
        // Pictures may each have a size of their own.
        if (isClip(out_)) checkSize(item);
        return pictureOf(*item.frame, colour_, depth_);
    }

    ClipShape shape() const override {
        const AVCodecParameters& video = *reader_.video().codecpar;
        ClipShape shape;
        shape.width = width_;
        shape.height = height_;
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
        const int all = reader_.frames();
        if (!wanted_) return static_cast<std::size_t>(all);
        if (all == 0) return wanted_->size();
        return static_cast<std::size_t>(std::distance(wanted_->begin(), wanted_->upper_bound(all)));
    }

    void finish(bool strict) const override {
        if (atEnd_) tellMissing(strict);
        if (wanted_) tell(cutNote(chooseFrames(set_, end_)));
        tellDamaged(strict);
    }

private:
    void choose(const std::string& asked) {
        set_ = parseFrameSet(asked);
        for (const FrameRange& range : set_) {
            if (range.first > 0) continue;
            throw Failure("the frames of a clip count from 1, and '" + asked + "' names others",
                          Exit::kWrongUsage);
        }
        // A length that is guessed from the time may be wrong.
        const std::int64_t listed = reader_.video().nb_frames;
        if (listed > 0) end_ = static_cast<int>(std::min<std::int64_t>(listed, end_));
        const ChosenFrames chosen = chooseFrames(set_, end_);
        wanted_.emplace(chosen.frames.begin(), chosen.frames.end());
    }

    bool isWanted(int number) const { return !wanted_ || wanted_->contains(number); }

    void tellMissing(bool strict) const {
        const int missing = reader_.missing();
        if (missing == 0) return;
        const int read = reader_.count();
        complain("'" + in_ + "' ends after " + std::to_string(read) + " of " +
                     std::to_string(read + missing) + " frames",
                 strict);
    }

    void tellDamaged(bool strict) const {
        int count = 0;
        std::string numbers;
        for (const int number : reader_.damaged()) {
            if (!isWanted(number)) continue;
            ++count;
            numbers += " " + std::to_string(number);
        }
        if (count == 0) return;
        complain(std::to_string(count) + " frames of '" + in_ + "' are damaged:" + numbers, strict);
    }

    void checkSize(const ClipItem& item) const {
        const AVFrame& frame = *item.frame;
        if (frame.width == width_ && frame.height == height_) return;
        throw Failure("cannot use '" + in_ + "': its frame " + std::to_string(item.task.frame) +
                      " has " + sizeText(frame.width, frame.height) + ", and the clip " +
                      sizeText(width_, height_));
    }

    void take(ClipItem& item, ClipFrame& read) {
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
    int width_;
    int height_;
    ClipColour colour_;
    Depth depth_;
    std::vector<FrameRange> set_;
    std::optional<std::set<int>> wanted_;
    int end_ = INT_MAX - 1;  // the last frame, as far as it is known
    bool atEnd_ = false;
    std::optional<std::int64_t> offset_;
    std::int64_t next_ = 0;
};

}  // namespace

std::unique_ptr<FrameSource> openClipSource(const RenderOptions& options) {
    return std::make_unique<ClipSource>(options);
}

}  // namespace program
