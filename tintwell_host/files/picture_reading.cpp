#include <OpenImageIO/filesystem.h>

#include <array>
#include <memory>
#include <string_view>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/jpeg_end.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/files/picture.h"

namespace program {
namespace {

// Reasons can come in several lines, the first of which tells it; some readers give none.
[[noreturn]] void fail(const std::string& path, const std::string& reasons) {
    const std::string reason = reasons.substr(0, reasons.find('\n'));
    throw Failure("cannot read '" + path + "': " + (reason.empty() ? "it is damaged" : reason));
}

// A picture file in memory, opened. What it was opened from must outlive it.
class OpenPicture {
public:
    OpenPicture(const std::string& path, const std::string& bytes)
        : path_(path), memory_(bytes.data(), bytes.size()) {
        // Straight alpha, as the file has it: multiplied in and divided out again it would lose
        // bits.
        OIIO::ImageSpec config;
        config["oiio:UnassociatedAlpha"] = 1;
        // Readers take the memory from here; without it they would open the file once more.
        OIIO::Filesystem::IOProxy* memory = &memory_;
        config.attribute("oiio:ioproxy", OIIO::TypeDesc::PTR, &memory);
        in_ = OIIO::ImageInput::open(path, &config, &memory_);
        if (!in_) fail(path, OIIO::geterror());
        const bool isJpeg = std::string_view(in_->format_name()) == "jpeg";
        if (isJpeg && !hasEndOfImage(bytes)) fail(path, "it ends early");
    }

    const OIIO::ImageSpec& spec() const { return in_->spec(); }

    // Channels [first, last) of all pixels, each pixel `stride` samples after the one before.
    template <typename Sample>
    void read(int first, int last, Sample* samples, std::size_t stride) {
        const OIIO::TypeDesc type(OIIO::BaseTypeFromC<Sample>::value);
        const auto step = static_cast<OIIO::stride_t>(stride * sizeof(Sample));
        if (!in_->read_image(0, 0, first, last, type, samples, step)) fail(path_, in_->geterror());
    }

private:
    std::string path_;
    OIIO::Filesystem::IOMemReader memory_;
    std::unique_ptr<OIIO::ImageInput> in_;
};

// Which of the file's channels are red, green, blue and alpha; -1 for none.
std::array<int, 4> channelsOf(const OIIO::ImageSpec& spec) {
    const auto named = [&spec](const char* name, int otherwise) {
        const int index = spec.channelindex(name);
        return index >= 0 ? index : otherwise;
    };
    const int colours = spec.nchannels - (spec.alpha_channel >= 0 ? 1 : 0);
    const int last = colours >= 3 ? 2 : 0;
    return {named("R", 0), named("G", last > 0 ? 1 : 0), named("B", last), spec.alpha_channel};
}

// Arranges pixels of `stride` samples as red, green, blue, alpha.
template <typename Sample>
void arrange(const std::vector<Sample>& samples, std::size_t stride,
             const std::array<int, 4>& channels, std::vector<Sample>& rgba) {
    for (std::size_t pixel = 0; pixel < rgba.size() / 4; ++pixel) {
        for (std::size_t k = 0; k < 4; ++k) {
            const auto channel = static_cast<std::size_t>(channels[k]);
            if (channels[k] >= 0) rgba[pixel * 4 + k] = samples[pixel * stride + channel];
        }
    }
}

template <typename Sample>
std::vector<Sample> readSamples(OpenPicture& in, Sample full) {
    const OIIO::ImageSpec& spec = in.spec();
    const std::array<int, 4> channels = channelsOf(spec);
    std::vector<Sample> rgba(spec.image_pixels() * 4, full);
    const bool hasAlpha = channels[3] >= 0;
    if (channels == std::array<int, 4>{0, 1, 2, hasAlpha ? 3 : -1}) {
        in.read(0, hasAlpha ? 4 : 3, rgba.data(), 4);
        return rgba;
    }
    const auto stride = static_cast<std::size_t>(spec.nchannels);
    std::vector<Sample> samples(spec.image_pixels() * stride);
    in.read(0, spec.nchannels, samples.data(), stride);
    arrange(samples, stride, channels, rgba);
    return rgba;
}

Depth depthOf(const OIIO::ImageSpec& spec) {
    return spec.format.size() == 1 ? Depth::k8 : Depth::kFloat;
}

}  // namespace

Picture decodePicture(const std::string& path, const std::string& bytes,
                      std::optional<Depth> depth) {
    OpenPicture in(path, bytes);
    const OIIO::ImageSpec& spec = in.spec();
    Picture picture;
    picture.width = spec.width;
    picture.height = spec.height;
    picture.depth = depth.value_or(depthOf(spec));
    picture.hasAlpha = spec.alpha_channel >= 0;
    picture.metadata = spec;
    if (picture.depth == Depth::k8) {
        picture.bytes = readSamples<std::uint8_t>(in, 255);
    } else {
        picture.floats = readSamples<float>(in, 1.0f);
    }
    return picture;
}

PictureFacts inspectPicture(const std::string& path, const std::string& bytes) {
    const OpenPicture in(path, bytes);
    return {static_cast<std::int64_t>(in.spec().image_pixels()), depthOf(in.spec())};
}

Picture readPicture(const std::string& path, Depth depth) {
    return decodePicture(path, readText(path), depth);
}

}  // namespace program
