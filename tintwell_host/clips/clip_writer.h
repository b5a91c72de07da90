// A graded clip.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "tintwell_host/clips/clip_picture.h"
#include "tintwell_host/clips/clip_reader.h"
#include "tintwell_host/files/output_file.h"

namespace program {

// What the frames to be written are like.
struct ClipShape {
    int width = 0;
    int height = 0;
    Depth depth = Depth::k8;
    bool hasAlpha = false;
    AVRational rate = {24, 1};
    AVRational timeBase = {1, 24};
    ClipColour colour = {AVCOL_SPC_BT709, false, false};
    const ClipReader* source = nullptr;  // for tags, metadata and sound; null: a sequence
    bool withSound = true;
};

// Threads: one at a time, but for format() and colour().
class ClipWriter {
public:
    // `codec` is "prores", "prores4444", "dnxhr", "h264" or "ffv1"; empty: as the container has it.
    // Throws Failure for what the container or the encoder does not take.
    ClipWriter(const std::string& path, const std::string& codec, const ClipShape& shape);
    ~ClipWriter();
    ClipWriter(const ClipWriter&) = delete;
    ClipWriter& operator=(const ClipWriter&) = delete;

    AVPixelFormat format() const { return encoder_->pix_fmt; }
    const ClipColour& colour() const { return shape_.colour; }

    // Times are in the shape's time base. Throws Failure.
    void writeFrame(AVFrame& frame, std::int64_t time, std::int64_t duration);
    void writeSound(AVPacket& packet);
    // Ends the file and gives it its name.
    void finish();

private:
    void openEncoder(const std::string& codec);
    void describeFrames();
    void addSound();
    void copyTags();
    void drain();

    std::string path_;
    ClipShape shape_;
    PartialFile partial_;
    AVFormatContext* file_ = nullptr;
    AVStream* video_ = nullptr;
    AvCodec encoder_;
    std::map<int, int> sound_;  // streams of the source and of this file
    std::map<std::int64_t, std::int64_t> durations_;
};

}  // namespace program
