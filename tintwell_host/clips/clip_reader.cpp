#include "tintwell_host/clips/clip_reader.h"

#include <algorithm>
#include <cstring>

namespace program {
namespace {

// FFV1 conceals a damaged frame and tells nobody but the log.
void noteComplaint(void* from, int level, const char* /*format*/, va_list /*values*/) {
    if (from == nullptr || level > AV_LOG_ERROR) return;
    if (*static_cast<const AVClass**>(from) != avcodec_get_class()) return;
    auto* complaints = static_cast<std::atomic<int>*>(static_cast<AVCodecContext*>(from)->opaque);
    if (complaints != nullptr) ++*complaints;
}

}  // namespace

ClipReader::ClipReader(const std::string& path) : path_(path) {
    avCheck(avformat_open_input(&file_, avFile(path).c_str(), nullptr, nullptr), "read", path);
    try {
        avCheck(avformat_find_stream_info(file_, nullptr), "read", path);
        openDecoder();
    } catch (...) {
        avformat_close_input(&file_);
        throw;
    }
}

ClipReader::~ClipReader() {
    avformat_close_input(&file_);
}

void ClipReader::openDecoder() {
    const AVCodec* codec = nullptr;
    const int index = av_find_best_stream(file_, AVMEDIA_TYPE_VIDEO, -1, -1, &codec, 0);
    if (index < 0) throw Failure("cannot read '" + path_ + "': it has no video");
    video_ = file_->streams[index];
    rate_ = av_guess_frame_rate(file_, video_, nullptr);
    decoder_.reset(avcodec_alloc_context3(codec));
    if (!decoder_) throw std::bad_alloc();
    avcodec_parameters_to_context(decoder_.get(), video_->codecpar);
    decoder_->pkt_timebase = video_->time_base;
    decoder_->thread_count = 0;
    decoder_->err_recognition = AV_EF_CRCCHECK;
    if (codec->id == AV_CODEC_ID_FFV1) {
        decoder_->opaque = &complaints_;
        decoder_->thread_type = FF_THREAD_SLICE;  // so that a complaint is the present frame's
        av_log_set_callback(noteComplaint);
    }
    avCheck(avcodec_open2(decoder_.get(), codec, nullptr), "read", path_);
    if (video_->codecpar->format < 0) {
        throw Failure("cannot read '" + path_ + "': none of its frames can be decoded");
    }
}

int ClipReader::frames() const {
    if (video_->nb_frames > 0) return static_cast<int>(video_->nb_frames);
    if (file_->duration <= 0 || rate_.num == 0) return 0;
    return static_cast<int>(av_rescale_q(file_->duration, {1, AV_TIME_BASE}, av_inv_q(rate_)));
}

int ClipReader::missing() const {
    if (std::strncmp(file_->iformat->name, "mov,", 4) != 0) return 0;
    return std::max(0, avformat_index_get_entries_count(video_) - packets_);
}

bool ClipReader::isSound(int stream) const {
    return file_->streams[stream]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
}

void ClipReader::send(const AVPacket* packet) {
    const int result = avcodec_send_packet(decoder_.get(), packet);
    if (result < 0 && result != AVERROR_EOF && result != AVERROR(EAGAIN)) {
        damaged_.push_back(++count_);
    }
}

bool ClipReader::receive(ClipFrame& next) {
    AvFrame frame(av_frame_alloc());
    if (!frame) throw std::bad_alloc();
    const int result = avcodec_receive_frame(decoder_.get(), frame.get());
    if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return false;
    ++count_;
    if (result < 0) {
        damaged_.push_back(count_);
        return receive(next);
    }
    if (complaints_.exchange(0) > 0 || frame->decode_error_flags != 0 ||
        (frame->flags & AV_FRAME_FLAG_CORRUPT) != 0) {
        damaged_.push_back(count_);
    }
    next.frame = std::move(frame);
    next.number = count_;
    return true;
}

void ClipReader::end(int result) {
    // Most containers take a read that failed for the end of the file.
    if (file_->pb != nullptr) avCheck(file_->pb->error, "read", path_);
    atEnd_ = true;
    if (result != AVERROR_EOF) damaged_.push_back(count_ + 1);
    send(nullptr);
}

bool ClipReader::read(ClipFrame& next) {
    next = {};
    for (;;) {
        if (receive(next)) return true;
        if (atEnd_) return !next.sound.empty();
        AvPacket packet(av_packet_alloc());
        if (!packet) throw std::bad_alloc();
        const int result = av_read_frame(file_, packet.get());
        if (result < 0) {
            end(result);
        } else if (packet->stream_index == video_->index) {
            ++packets_;
            send(packet.get());
        } else if (isSound(packet->stream_index)) {
            next.sound.push_back(std::move(packet));
        }
    }
}

}  // namespace program
