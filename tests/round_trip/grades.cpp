#include "tests/round_trip/grades.h"

#include <cstdlib>
#include <stdexcept>

#include "tests/peers/peer.h"

namespace round_trip {
namespace {

using program::Depth;

bool runs(const std::string& command) {
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

void mustRun(const std::string& command) {
    if (std::system(command.c_str()) != 0) throw std::runtime_error("failed: " + command);
}

// `command` makes OUT of IN, both PNG files of the picture's depth.
Picture throughFiles(
    const Picture& picture, const std::string& folder,
    const std::function<std::string(const std::string&, const std::string&)>& command) {
    const std::string in = folder + "/in.png";
    const std::string out = folder + "/out.png";
    program::writePicture(in, picture);
    mustRun(command("'" + in + "'", "'" + out + "'"));
    return program::readPicture(out, picture.depth);
}

std::string ffmpeg() {
    return "ffmpeg -nostdin -loglevel error -y ";
}

auto withFFmpeg(const std::string& filter) {
    return [filter](const Picture& picture, const std::string& folder) -> std::optional<Picture> {
        if (!runs("ffmpeg -version")) return std::nullopt;
        const std::string format = picture.depth == Depth::k8 ? "rgb24" : "rgb48be";
        return throughFiles(picture, folder, [&](const std::string& in, const std::string& out) {
            return ffmpeg() + "-i " + in + " -vf \"" + filter + "\" -pix_fmt " + format + " " + out;
        });
    };
}

auto withImageMagick(const std::string& options) {
    return [options](const Picture& picture, const std::string& folder) -> std::optional<Picture> {
        if (!runs("convert -version")) return std::nullopt;
        const std::string form = picture.depth == Depth::k8 ? " PNG24:" : " PNG48:";
        return throughFiles(picture, folder, [&](const std::string& in, const std::string& out) {
            return "convert " + in + " " + options + form + out;
        });
    };
}

// Floats stay floats; FFmpeg's file formats have none, so the pixels travel raw.
std::optional<Picture> withLut3d(const Picture& picture, const std::string& folder) {
    const std::string cube = TINTWELL_SOURCE "/examples/golden-hour.cube";
    if (picture.depth == Depth::k8) {
        return withFFmpeg("lut3d=file='" + cube + "'")(picture, folder);
    }
    const auto graded =
        peers::applyWithFFmpeg(cube, {picture.width, picture.height, picture.floats}, folder);
    if (!graded) return std::nullopt;
    Picture result = picture;
    result.floats = graded->rgba;
    return result;
}

std::optional<Picture> withCdl(const Picture& picture, const std::string&) {
    return gradeWithCdl(picture);
}

// Without subsampling before the grade, which would mix neighbouring pixels.
std::string inYuv(const std::string& filter) {
    return "format=yuv444p," + filter;
}

Grade byFFmpeg(const std::string& name, const std::string& filter) {
    return {name, "FFmpeg", filter, true, withFFmpeg(filter)};
}

Grade byFFmpegIn8Bits(const std::string& name, const std::string& filter) {
    return {name, "FFmpeg", filter, false, withFFmpeg(inYuv(filter))};
}

Grade byImageMagick(const std::string& name, const std::string& options) {
    return {name, "ImageMagick", options, true, withImageMagick(options)};
}

}  // namespace

const std::vector<Grade>& grades() {
    static const std::vector<Grade> all = {
        byFFmpeg("Curves", "curves=r='0/0.05 0.5/0.6 1/0.95':b='0/0.1 0.5/0.45 1/0.9'"),
        {"Lut3d", "FFmpeg", "lut3d=golden-hour.cube", true, withLut3d},
        byFFmpegIn8Bits("Eq", "eq=contrast=1.2:brightness=0.03:saturation=1.3:gamma=1.1"),
        byFFmpegIn8Bits("Hue", "hue=h=20:s=1.2"),
        byImageMagick("Level", "-level 5%,90%,1.2"),
        byImageMagick("Modulate", "-modulate 105,130,110"),
        {"Cdl", "OpenColorIO", cdlInWords(), true, withCdl},
    };
    return all;
}

std::optional<Picture> throughJpeg(const Picture& picture, const std::string& folder) {
    if (!runs("convert -version")) return std::nullopt;
    return throughFiles(picture, folder, [&](const std::string& in, const std::string& out) {
        const std::string jpeg = "'" + folder + "/packed.jpg'";
        return "convert " + in + " -quality 90 -sampling-factor 4:2:0 " + jpeg + " && convert " +
               jpeg + " PNG24:" + out;
    });
}

std::optional<Picture> throughH264(const Picture& picture, const std::string& folder) {
    if (!runs("ffmpeg -version")) return std::nullopt;
    return throughFiles(picture, folder, [&](const std::string& in, const std::string& out) {
        const std::string video = "'" + folder + "/packed.mp4'";
        return ffmpeg() + "-loop 1 -i " + in +
               " -frames:v 3 -c:v libx264 -crf 18 -pix_fmt yuv420p " + video + " && " + ffmpeg() +
               "-i " + video + " -frames:v 1 -pix_fmt rgb24 " + out;
    });
}

}  // namespace round_trip
