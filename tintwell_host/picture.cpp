#include "tintwell_host/picture.h"

#include <OpenImageIO/filesystem.h>

#include <array>
#include <memory>

#include "tintwell_host/failure.h"
#include "tintwell_host/memory_file.h"
#include "tintwell_host/output_file.h"

namespace program {
namespace {

// Reasons can come in several lines, the first of which tells it.
[[noreturn]] void fail(const char* what, const std::string& path, const std::string& reasons) {
    throw Failure(std::string("cannot ") + what + " '" + path +
                  "': " + reasons.substr(0, reasons.find('\n')));
}

std::unique_ptr<OIIO::ImageInput> openPicture(const std::string& path) {
    // Straight alpha, as the file has it: multiplied in and divided out again it would lose bits.
    OIIO::ImageSpec config;
    config["oiio:UnassociatedAlpha"] = 1;
    auto in = OIIO::ImageInput::open(path, &config);
    if (!in) fail("read", path, OIIO::geterror());
    return in;
}

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

// Arranges `count` pixels of `stride` samples as red, green, blue, alpha.
template <typename Sample>
std::vector<Sample> arrange(const std::vector<Sample>& samples, std::size_t stride,
                            const std::array<int, 4>& channels, Sample full) {
    std::vector<Sample> out(samples.size() / stride * 4);
    for (std::size_t pixel = 0; pixel < out.size() / 4; ++pixel) {
        for (std::size_t k = 0; k < 4; ++k) {
            const int channel = channels[k];
            const std::size_t at = pixel * stride + static_cast<std::size_t>(channel);
            out[pixel * 4 + k] = channel < 0 ? full : samples[at];
        }
    }
    return out;
}

template <typename Sample>
std::vector<Sample> readSamples(OIIO::ImageInput& in, const std::string& path, Sample full) {
    const OIIO::ImageSpec& spec = in.spec();
    const auto stride = static_cast<std::size_t>(spec.nchannels);
    std::vector<Sample> samples(spec.image_pixels() * stride);
    if (!in.read_image(0, 0, 0, spec.nchannels, OIIO::TypeDesc(OIIO::BaseTypeFromC<Sample>::value),
                       samples.data())) {
        fail("read", path, in.geterror());
    }
    return arrange(samples, stride, channelsOf(spec), full);
}

// Colour first, alpha if the picture has one, in file order.
template <typename Sample>
std::vector<Sample> dropAlpha(const std::vector<Sample>& rgba) {
    std::vector<Sample> rgb;
    rgb.reserve(rgba.size() / 4 * 3);
    for (std::size_t at = 0; at < rgba.size(); at += 4) {
        rgb.insert(rgb.end(), rgba.begin() + static_cast<std::ptrdiff_t>(at),
                   rgba.begin() + static_cast<std::ptrdiff_t>(at + 3));
    }
    return rgb;
}

OIIO::TypeDesc storedFormat(const std::string& path, Depth depth) {
    if (depth == Depth::k8) return OIIO::TypeDesc::UINT8;
    const std::string extension = OIIO::Filesystem::extension(path, false);
    return extension == "png" || extension == "PNG" ? OIIO::TypeDesc::UINT16
                                                    : OIIO::TypeDesc::FLOAT;
}

OIIO::ImageSpec outputSpec(const std::string& path, const Picture& picture) {
    OIIO::ImageSpec spec = picture.metadata;
    spec.width = picture.width;
    spec.height = picture.height;
    spec.depth = 1;
    spec.tile_width = spec.tile_height = spec.tile_depth = 0;
    spec.nchannels = picture.hasAlpha ? 4 : 3;
    spec.default_channel_names();
    spec.channelformats.clear();
    spec.set_format(storedFormat(path, picture.depth));
    spec["oiio:UnassociatedAlpha"] = 1;
    // The file's own way of packing belongs to its format, not to the one that is written.
    spec.erase_attribute("Compression");
    spec.erase_attribute("CompressionQuality");
    spec["jpeg:subsampling"] = "4:4:4";
    spec["CompressionQuality"] = 95;
    return spec;
}

template <typename Sample>
bool writeSamples(OIIO::ImageOutput& out, const Picture& picture, const std::vector<Sample>& rgba) {
    const std::vector<Sample> samples = picture.hasAlpha ? rgba : dropAlpha(rgba);
    return out.write_image(OIIO::TypeDesc(OIIO::BaseTypeFromC<Sample>::value), samples.data());
}

void encode(const std::string& path, const Picture& picture, const std::string& file) {
    const auto out = OIIO::ImageOutput::create(path);
    if (!out) fail("write", path, OIIO::geterror());
    const bool written =
        out->open(file, outputSpec(path, picture)) &&
        (picture.depth == Depth::k8 ? writeSamples(*out, picture, picture.bytes)
                                    : writeSamples(*out, picture, picture.floats)) &&
        out->close();
    if (!written) fail("write", path, out->geterror());
}

}  // namespace

Depth naturalDepth(const std::string& path) {
    return openPicture(path)->spec().format.size() == 1 ? Depth::k8 : Depth::kFloat;
}

Picture readPicture(const std::string& path, Depth depth) {
    const auto in = openPicture(path);
    const OIIO::ImageSpec& spec = in->spec();
    Picture picture;
    picture.width = spec.width;
    picture.height = spec.height;
    picture.depth = depth;
    picture.hasAlpha = spec.alpha_channel >= 0;
    picture.metadata = spec;
    if (depth == Depth::k8) {
        picture.bytes = readSamples<std::uint8_t>(*in, path, 255);
    } else {
        picture.floats = readSamples<float>(*in, path, 1.0f);
    }
    return picture;
}

void writePicture(const std::string& path, const Picture& picture) {
    const MemoryFile memory;
    encode(path, picture, memory.path());
    writeWhole(path, readText(memory.path()));
}

std::string encodedJpeg(const Picture& picture) {
    const MemoryFile memory;
    encode("picture.jpg", picture, memory.path());
    return readText(memory.path());
}

}  // namespace program
