// FFmpeg's objects, released by scope, and its errors as sentences.
#pragma once

#include <memory>
#include <string>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

#include "tintwell_host/files/failure.h"

namespace program {

struct AvFree {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
    void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
    void operator()(SwsContext* context) const { sws_freeContext(context); }
};
using AvFrame = std::unique_ptr<AVFrame, AvFree>;
using AvPacket = std::unique_ptr<AVPacket, AvFree>;
using AvCodec = std::unique_ptr<AVCodecContext, AvFree>;
using AvScaler = std::unique_ptr<SwsContext, AvFree>;

inline std::string avReason(int error) {
    char text[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(error, text, sizeof text);
    return text;
}

// Throws Failure for an error, "cannot `what` 'path': reason".
inline int avCheck(int result, const char* what, const std::string& path) {
    if (result >= 0) return result;
    throw Failure(std::string("cannot ") + what + " '" + path + "': " + avReason(result),
                  exitFor(AVUNERROR(result)));
}

// The name of a file for FFmpeg, which takes what stands before a colon for a protocol.
inline std::string avFile(const std::string& path) {
    return "file:" + path;
}

}  // namespace program
