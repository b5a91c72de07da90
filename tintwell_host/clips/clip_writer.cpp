#include "tintwell_host/clips/clip_writer.h"

extern "C" {
#include <libavutil/opt.h>
}

#include <cstring>

namespace program {
namespace {

struct Codec {
    const char* name;     // as --codec has it
    const char* encoder;  // as FFmpeg has it
    const char* profile;  // 8 bits
    const char* deepProfile;
    AVPixelFormat format;  // 8 bits
    AVPixelFormat deep;
    AVPixelFormat alpha;  // NONE: the codec has none
    AVPixelFormat deepAlpha;
};

constexpr AVPixelFormat kNone = AV_PIX_FMT_NONE;

constexpr Codec kCodecs[] = {
    {"prores", "prores_ks", "hq", "hq", AV_PIX_FMT_YUV422P10, AV_PIX_FMT_YUV422P10, kNone, kNone},
    {"prores4444", "prores_ks", "4444", "4444", AV_PIX_FMT_YUV444P10, AV_PIX_FMT_YUV444P10,
     AV_PIX_FMT_YUVA444P10, AV_PIX_FMT_YUVA444P10},
    {"dnxhr", "dnxhd", "dnxhr_hq", "dnxhr_hqx", AV_PIX_FMT_YUV422P, AV_PIX_FMT_YUV422P10, kNone,
     kNone},
    {"h264", "libx264", nullptr, nullptr, AV_PIX_FMT_YUV420P, AV_PIX_FMT_YUV420P, kNone, kNone},
    {"ffv1", "ffv1", nullptr, nullptr, AV_PIX_FMT_0RGB32, AV_PIX_FMT_RGB48, AV_PIX_FMT_RGB32,
     AV_PIX_FMT_RGBA64},
};

std::string defaultCodec(const std::string& container, bool withAlpha) {
    if (container == "mov") return withAlpha ? "prores4444" : "prores";
    if (container == "mp4") return "h264";
    if (container == "mxf") return "dnxhr";
    return "ffv1";
}

const Codec& findCodec(const std::string& name) {
    for (const Codec& codec : kCodecs)
        if (name == codec.name) return codec;
    throw Failure("there is no codec '" + name + "'", Exit::kWrongUsage);
}

AVPixelFormat formatOf(const Codec& codec, const ClipShape& shape) {
    const bool deep = shape.depth == Depth::kFloat;
    if (!shape.hasAlpha) return deep ? codec.deep : codec.format;
    const AVPixelFormat format = deep ? codec.deepAlpha : codec.alpha;
    if (format != kNone) return format;
    throw Failure(std::string("the codec ") + codec.name +
                      " holds no alpha, and the frames have it: use --codec prores4444 or ffv1",
                  Exit::kWrongUsage);
}

void checkSize(const std::string& path, const Codec& codec, const ClipShape& shape,
               AVPixelFormat format) {
    const AVPixFmtDescriptor& pixels = *av_pix_fmt_desc_get(format);
    if (shape.width % (1 << pixels.log2_chroma_w) == 0 &&
        shape.height % (1 << pixels.log2_chroma_h) == 0) {
        return;
    }
    throw Failure("cannot write '" + path + "': " + codec.name +
                  " needs an even size, and the frames have " + std::to_string(shape.width) +
                  " x " + std::to_string(shape.height));
}

// Containers whose times are numbers of frames.
bool needsFixedRate(const AVOutputFormat& container) {
    return std::strcmp(container.name, "mxf") == 0 || std::strcmp(container.name, "avi") == 0;
}

// MXF does not tell what it holds; of sound it is uncompressed samples.
bool holds(const AVOutputFormat& container, AVCodecID codec) {
    const int answer = avformat_query_codec(&container, codec, FF_COMPLIANCE_NORMAL);
    if (answer >= 0) return answer == 1;
    return codec == AV_CODEC_ID_DNXHD || codec == AV_CODEC_ID_PCM_S16LE ||
           codec == AV_CODEC_ID_PCM_S24LE;
}

// Containers of those we know that hold a codec.
std::string containersFor(AVCodecID codec) {
    std::string names;
    for (const char* name : {"mov", "mp4", "mkv", "mxf", "avi"}) {
        const std::string file = std::string("x.") + name;
        if (!holds(*av_guess_format(nullptr, file.c_str(), nullptr), codec)) continue;
        names += (names.empty() ? "" : ", ") + std::string(name);
    }
    return names;
}

}  // namespace

ClipWriter::ClipWriter(const std::string& path, const std::string& codec, const ClipShape& shape)
    : path_(path), shape_(shape), partial_(path) {
    const AVOutputFormat* container = av_guess_format(nullptr, path.c_str(), nullptr);
    const std::string file = avFile(partial_.name());
    avCheck(avformat_alloc_output_context2(&file_, container, nullptr, file.c_str()), "write",
            path);
    try {
        // No date and no version: the same clip is the same bytes.
        file_->flags |= AVFMT_FLAG_BITEXACT;
        openEncoder(codec);
        if (shape_.source != nullptr) copyTags();
        if (shape_.source != nullptr && shape_.withSound) addSound();
        avCheck(avio_open(&file_->pb, file.c_str(), AVIO_FLAG_WRITE), "write", path);
        avCheck(avformat_write_header(file_, nullptr), "write", path);
    } catch (...) {
        avio_closep(&file_->pb);
        avformat_free_context(file_);
        throw;
    }
}

ClipWriter::~ClipWriter() {
    avio_closep(&file_->pb);
    avformat_free_context(file_);
}

void ClipWriter::openEncoder(const std::string& name) {
    const Codec& choice =
        findCodec(name.empty() ? defaultCodec(file_->oformat->name, shape_.hasAlpha) : name);
    const AVCodec* codec = avcodec_find_encoder_by_name(choice.encoder);
    if (codec == nullptr) {
        throw Failure(std::string("this machine's FFmpeg has no ") + choice.encoder);
    }
    if (!holds(*file_->oformat, codec->id)) {
        throw Failure(
            "'" + path_ + "' cannot hold " + choice.name + ": use " + containersFor(codec->id),
            Exit::kWrongUsage);
    }
    encoder_.reset(avcodec_alloc_context3(codec));
    if (!encoder_) throw std::bad_alloc();
    encoder_->pix_fmt = formatOf(choice, shape_);
    checkSize(path_, choice, shape_, encoder_->pix_fmt);
    describeFrames();
    const char* profile = shape_.depth == Depth::kFloat ? choice.deepProfile : choice.profile;
    if (profile != nullptr) av_opt_set(encoder_->priv_data, "profile", profile, 0);
    if (std::strcmp(choice.name, "h264") == 0) av_opt_set(encoder_->priv_data, "crf", "16", 0);
    const int opened = avcodec_open2(encoder_.get(), codec, nullptr);
    if (opened < 0) {
        throw Failure("cannot write '" + path_ + "': " + choice.name + " does not take frames of " +
                      std::to_string(shape_.width) + " x " + std::to_string(shape_.height) + ": " +
                      avReason(opened));
    }
    video_ = avformat_new_stream(file_, nullptr);
    if (video_ == nullptr) throw std::bad_alloc();
    avcodec_parameters_from_context(video_->codecpar, encoder_.get());
    video_->time_base = encoder_->time_base;
    video_->avg_frame_rate = shape_.rate;
    video_->sample_aspect_ratio = encoder_->sample_aspect_ratio;
}

void ClipWriter::describeFrames() {
    encoder_->width = shape_.width;
    encoder_->height = shape_.height;
    encoder_->time_base = needsFixedRate(*file_->oformat) ? av_inv_q(shape_.rate) : shape_.timeBase;
    encoder_->framerate = shape_.rate;
    // One number for every machine, as the bytes depend on it.
    encoder_->thread_count = 4;
    encoder_->flags |= AV_CODEC_FLAG_BITEXACT;
    if ((file_->oformat->flags & AVFMT_GLOBALHEADER) != 0) {
        encoder_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;
    }
    const bool rgb = (av_pix_fmt_desc_get(encoder_->pix_fmt)->flags & AV_PIX_FMT_FLAG_RGB) != 0;
    encoder_->colorspace = rgb ? AVCOL_SPC_RGB : shape_.colour.matrix;
    encoder_->color_range = rgb || shape_.colour.fullRange ? AVCOL_RANGE_JPEG : AVCOL_RANGE_MPEG;
    if (shape_.source == nullptr) return;
    const AVStream& stream = shape_.source->video();
    encoder_->color_primaries = stream.codecpar->color_primaries;
    encoder_->color_trc = stream.codecpar->color_trc;
    encoder_->chroma_sample_location = stream.codecpar->chroma_location;
    encoder_->sample_aspect_ratio = stream.sample_aspect_ratio.num != 0
                                        ? stream.sample_aspect_ratio
                                        : stream.codecpar->sample_aspect_ratio;
}

// Metadata holds the timecode, from which the container makes its own track.
void ClipWriter::copyTags() {
    const AVFormatContext& source = shape_.source->file();
    const AVStream& from = shape_.source->video();
    av_dict_copy(&file_->metadata, source.metadata, 0);
    av_dict_copy(&video_->metadata, from.metadata, 0);
    // These tell about the file that was read.
    for (const char* name :
         {"encoder", "vendor_id", "major_brand", "minor_version", "compatible_brands"}) {
        av_dict_set(&file_->metadata, name, nullptr, 0);
        av_dict_set(&video_->metadata, name, nullptr, 0);
    }
    video_->disposition = from.disposition;
    for (int i = 0; i < from.nb_side_data; ++i) {
        const AVPacketSideData& side = from.side_data[i];
        std::uint8_t* copy = av_stream_new_side_data(video_, side.type, side.size);
        if (copy != nullptr) std::memcpy(copy, side.data, side.size);
    }
    for (unsigned i = 0; i < source.nb_streams; ++i) {
        const AVDictionaryEntry* code =
            av_dict_get(source.streams[i]->metadata, "timecode", nullptr, 0);
        if (code != nullptr) av_dict_set(&video_->metadata, "timecode", code->value, 0);
    }
}

void ClipWriter::addSound() {
    const AVFormatContext& source = shape_.source->file();
    for (unsigned i = 0; i < source.nb_streams; ++i) {
        const AVStream& from = *source.streams[i];
        if (!shape_.source->isSound(static_cast<int>(i))) continue;
        const AVCodecID codec = from.codecpar->codec_id;
        if (!holds(*file_->oformat, codec)) {
            throw Failure("'" + path_ + "' cannot hold the sound, which is " +
                          avcodec_get_name(codec) + ": use " + containersFor(codec) +
                          ", or --no-audio");
        }
        AVStream* to = avformat_new_stream(file_, nullptr);
        if (to == nullptr) throw std::bad_alloc();
        avcodec_parameters_copy(to->codecpar, from.codecpar);
        to->codecpar->codec_tag = 0;
        to->time_base = from.time_base;
        to->disposition = from.disposition;
        av_dict_copy(&to->metadata, from.metadata, 0);
        sound_[static_cast<int>(i)] = to->index;
    }
}

void ClipWriter::writeFrame(AVFrame& frame, std::int64_t time, std::int64_t duration) {
    frame.pts = av_rescale_q(time, shape_.timeBase, encoder_->time_base);
    // Some encoders write the frame's own tags into its header.
    frame.colorspace = encoder_->colorspace;
    frame.color_range = encoder_->color_range;
    frame.color_primaries = encoder_->color_primaries;
    frame.color_trc = encoder_->color_trc;
    durations_[frame.pts] = av_rescale_q(duration, shape_.timeBase, encoder_->time_base);
    avCheck(avcodec_send_frame(encoder_.get(), &frame), "write", path_);
    drain();
}

void ClipWriter::drain() {
    for (;;) {
        const AvPacket packet(av_packet_alloc());
        if (!packet) throw std::bad_alloc();
        const int result = avcodec_receive_packet(encoder_.get(), packet.get());
        if (result == AVERROR(EAGAIN) || result == AVERROR_EOF) return;
        avCheck(result, "write", path_);
        if (const auto known = durations_.extract(packet->pts)) packet->duration = known.mapped();
        packet->stream_index = video_->index;
        av_packet_rescale_ts(packet.get(), encoder_->time_base, video_->time_base);
        avCheck(av_interleaved_write_frame(file_, packet.get()), "write", path_);
    }
}

void ClipWriter::writeSound(AVPacket& packet) {
    const auto to = sound_.find(packet.stream_index);
    if (to == sound_.end()) return;
    const AVStream& from = *shape_.source->file().streams[packet.stream_index];
    av_packet_rescale_ts(&packet, from.time_base, file_->streams[to->second]->time_base);
    packet.stream_index = to->second;
    packet.pos = -1;
    avCheck(av_interleaved_write_frame(file_, &packet), "write", path_);
}

void ClipWriter::finish() {
    avCheck(avcodec_send_frame(encoder_.get(), nullptr), "write", path_);
    drain();
    avCheck(av_write_trailer(file_), "write", path_);
    avCheck(avio_closep(&file_->pb), "write", path_);
    partial_.keep();
}

}  // namespace program
