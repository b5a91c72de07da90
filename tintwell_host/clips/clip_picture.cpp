#include "tintwell_host/clips/clip_picture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace program {
namespace {

const AVPixFmtDescriptor& describe(AVPixelFormat format) {
    return *av_pix_fmt_desc_get(format);
}

bool isRgb(AVPixelFormat format) {
    return (describe(format).flags & AV_PIX_FMT_FLAG_RGB) != 0;
}

AVPixelFormat samplesOf(Depth depth) {
    return depth == Depth::k8 ? AV_PIX_FMT_RGBA : AV_PIX_FMT_RGBA64;
}

AvFrame allocate(AVPixelFormat format, int width, int height) {
    AvFrame frame(av_frame_alloc());
    if (!frame) throw std::bad_alloc();
    frame->format = format;
    frame->width = width;
    frame->height = height;
    if (av_frame_get_buffer(frame.get(), 0) < 0) throw std::bad_alloc();
    return frame;
}

// Both of the same size; either side may be YUV.
void convert(const AVFrame& from, AVFrame& to, const ClipColour& colour) {
    constexpr int kOne = 1 << 16;
    const auto source = static_cast<AVPixelFormat>(from.format);
    const auto target = static_cast<AVPixelFormat>(to.format);
    const AvScaler scaler(sws_getContext(
        from.width, from.height, source, to.width, to.height, target,
        SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT | SWS_FULL_CHR_H_INP | SWS_BITEXACT,
        nullptr, nullptr, nullptr));
    if (!scaler) {
        throw Failure("frames of the format " + std::string(describe(source).name) +
                      " cannot be turned into " + describe(target).name);
    }
    const int* matrix = sws_getCoefficients(colour.matrix);
    sws_setColorspaceDetails(scaler.get(), matrix, isRgb(source) || colour.fullRange, matrix,
                             isRgb(target) || colour.fullRange, 0, kOne, kOne);
    sws_scale(scaler.get(), from.data, from.linesize, 0, from.height, to.data, to.linesize);
}

// Rows of both have 4 * width samples.
template <typename From, typename To, typename Change>
void copyRow(const From* from, To* to, int width, Change change) {
    std::transform(from, from + static_cast<std::ptrdiff_t>(width) * 4, to, change);
}

std::uint16_t toSixteen(float value) {
    return static_cast<std::uint16_t>(std::lround(std::clamp(value, 0.0f, 1.0f) * 65535.0f));
}

}  // namespace

AVColorSpace usualMatrix(int width, int height) {
    return width >= 1280 || height >= 720 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

ClipColour colourOf(const AVCodecParameters& video) {
    const auto format = static_cast<AVPixelFormat>(video.format);
    ClipColour colour{video.color_space, video.color_range == AVCOL_RANGE_JPEG, false};
    if (describe(format).name[3] == 'j') colour.fullRange = true;
    if (colour.matrix == AVCOL_SPC_UNSPECIFIED || colour.matrix == AVCOL_SPC_RGB) {
        colour.isAssumed = !isRgb(format);
        colour.matrix = usualMatrix(video.width, video.height);
    }
    return colour;
}

Depth depthOf(AVPixelFormat format) {
    return describe(format).comp[0].depth <= 8 ? Depth::k8 : Depth::kFloat;
}

bool hasAlpha(AVPixelFormat format) {
    return (describe(format).flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

Picture pictureOf(const AVFrame& frame, const ClipColour& colour, Depth depth) {
    const AvFrame rgba = allocate(samplesOf(depth), frame.width, frame.height);
    convert(frame, *rgba, colour);
    Picture picture;
    picture.width = frame.width;
    picture.height = frame.height;
    picture.depth = depth;
    picture.hasAlpha = hasAlpha(static_cast<AVPixelFormat>(frame.format));
    const std::size_t row = static_cast<std::size_t>(frame.width) * 4;
    const std::size_t samples = row * static_cast<std::size_t>(frame.height);
    picture.bytes.resize(depth == Depth::k8 ? samples : 0);
    picture.floats.resize(depth == Depth::k8 ? 0 : samples);
    for (int y = 0; y < frame.height; ++y) {
        const std::uint8_t* from =
            rgba->data[0] + static_cast<std::ptrdiff_t>(y) * rgba->linesize[0];
        const std::size_t at = static_cast<std::size_t>(y) * row;
        if (depth == Depth::k8) {
            std::memcpy(&picture.bytes[at], from, row);
        } else {
            copyRow(reinterpret_cast<const std::uint16_t*>(from), &picture.floats[at], frame.width,
                    [](std::uint16_t value) { return static_cast<float>(value) / 65535.0f; });
        }
    }
    return picture;
}

AvFrame frameOf(const Picture& picture, AVPixelFormat format, const ClipColour& colour) {
    const AvFrame rgba = allocate(samplesOf(picture.depth), picture.width, picture.height);
    const std::size_t row = static_cast<std::size_t>(picture.width) * 4;
    for (int y = 0; y < picture.height; ++y) {
        std::uint8_t* to = rgba->data[0] + static_cast<std::ptrdiff_t>(y) * rgba->linesize[0];
        const std::size_t at = static_cast<std::size_t>(y) * row;
        if (picture.depth == Depth::k8) {
            std::memcpy(to, &picture.bytes[at], row);
        } else {
            copyRow(&picture.floats[at], reinterpret_cast<std::uint16_t*>(to), picture.width,
                    toSixteen);
        }
    }
    AvFrame frame = allocate(format, picture.width, picture.height);
    convert(*rgba, *frame, colour);
    return frame;
}

}  // namespace program
