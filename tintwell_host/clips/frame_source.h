// What a job that reads or writes a clip gets its frames from.
#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "tintwell_host/clips/clip_writer.h"
#include "tintwell_host/jobs/render_options.h"
#include "tintwell_host/jobs/sequence_job.h"

namespace program {

// One frame on its way: decoded, then graded, then in the output's own form.
struct ClipItem {
    FrameTask task;
    AvFrame frame;
    std::vector<AvPacket> sound;
    std::int64_t time = 0;
    std::int64_t duration = 0;
    bool isVideo = true;
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};
using ItemPointer = std::shared_ptr<ClipItem>;

// Threads: one at a time, but for picture().
class FrameSource {
public:
    virtual ~FrameSource() = default;
    // The next item, or null at the end.
    virtual ItemPointer next() = 0;
    // The item's picture.
    virtual Picture picture(const ClipItem& item) const = 0;
    virtual ClipShape shape() const = 0;
    virtual std::size_t frames() const = 0;
    // Tells the user what is damaged or not there. Throws Failure for what was asked to be one, and
    // when none of the frames asked for is there.
    virtual void finish(bool strict) const = 0;
};

// A line for the user on standard error; none for an empty one.
void tell(const std::string& line);

// Throw Failure.
std::unique_ptr<FrameSource> openClipSource(const RenderOptions& options);
std::unique_ptr<FrameSource> openSequenceSource(const RenderOptions& options);

}  // namespace program
