#include "tintwell_host/clips/frame_source.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/jobs/frame_set.h"
#include "tintwell_host/jobs/sequence.h"

namespace program {
namespace {

class SequenceSource : public FrameSource {
public:
    explicit SequenceSource(const RenderOptions& options)
        : in_(options.in), out_(options.out), frames_(existingFrames(options.in)) {
        if (!options.frames.empty()) {
            const ChosenFrames chosen = chooseFrames(parseFrameSet(options.frames), frames_.back());
            tell(cutNote(chosen));
            frames_ = chosen.frames;
        }
        const std::string first = frameFile(in_, frames_.front());
        const Picture picture = decodePicture(first, readText(first), depthFor(options));
        shape_.width = picture.width;
        shape_.height = picture.height;
        shape_.depth = picture.depth;
        shape_.hasAlpha = picture.hasAlpha;
        shape_.rate = av_d2q(options.rate.value_or(24.0), 1001000);
        shape_.timeBase = av_inv_q(shape_.rate);
        shape_.colour.matrix = usualMatrix(picture.width, picture.height);
    }

    ItemPointer next() override {
        if (next_ == frames_.size()) return nullptr;
        auto item = std::make_shared<ClipItem>();
        const int frame = frames_[next_];
        item->task = {frame, frameFile(in_, frame), out_};
        item->time = static_cast<std::int64_t>(next_++);
        item->duration = 1;
        return item;
    }

    Picture picture(const ClipItem& item) const override {
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

}  // namespace

std::unique_ptr<FrameSource> openSequenceSource(const RenderOptions& options) {
    return std::make_unique<SequenceSource>(options);
}

}  // namespace program
