// A clip's frames and its other streams' packets, in the order of the file.
#pragma once

#include <atomic>
#include <string>
#include <vector>

#include "tintwell_host/clips/av.h"

namespace program {

struct ClipFrame {
    AvFrame frame;                // null when only packets are left
    int number = 0;               // from 1
    std::vector<AvPacket> sound;  // packets that came before it
};

// Threads: one at a time.
class ClipReader {
public:
    // Throws Failure for a file that is no clip or has no video.
    explicit ClipReader(const std::string& path);
    ~ClipReader();
    ClipReader(const ClipReader&) = delete;
    ClipReader& operator=(const ClipReader&) = delete;

    // False at the end. A damaged packet is counted and passed over. Throws Failure for a file that
    // cannot be read any further.
    bool read(ClipFrame& next);

    // Frames so far, damaged ones included.
    int count() const { return count_; }
    // At the end: frames that the file's index lists and that never came. Only QuickTime's kin have
    // an index of all frames.
    int missing() const;
    // Numbers of the frames that were damaged.
    const std::vector<int>& damaged() const { return damaged_; }
    const AVFormatContext& file() const { return *file_; }
    const AVStream& video() const { return *video_; }
    AVRational rate() const { return rate_; }
    // As the file says, or as time and rate suggest; 0: unknown.
    int frames() const;
    bool isSound(int stream) const;

private:
    void openDecoder();
    bool receive(ClipFrame& next);
    void send(const AVPacket* packet);
    void end(int result);

    std::string path_;
    AVFormatContext* file_ = nullptr;
    AVStream* video_ = nullptr;
    AVRational rate_ = {0, 1};
    AvCodec decoder_;
    std::atomic<int> complaints_{0};
    std::vector<int> damaged_;
    int packets_ = 0;  // of the video
    int count_ = 0;
    bool atEnd_ = false;
};

}  // namespace program
