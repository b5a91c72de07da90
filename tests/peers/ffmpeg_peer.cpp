#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "tests/peers/peer.h"

namespace peers {
namespace {

bool runs(const std::string& command) {
    return std::system(command.c_str()) == 0;
}

// FFmpeg's order of float planes: green, blue, red, alpha.
constexpr std::size_t kPlaneChannel[] = {1, 2, 0, 3};

void writePlanes(const std::string& path, const Pixels& in) {
    std::ofstream out(path, std::ios::binary);
    for (const std::size_t channel : kPlaneChannel) {
        for (std::size_t at = channel; at < in.rgba.size(); at += 4) {
            out.write(reinterpret_cast<const char*>(&in.rgba[at]), sizeof(float));
        }
    }
}

void readPlanes(const std::string& path, Pixels& out) {
    std::ifstream in(path, std::ios::binary);
    for (const std::size_t channel : kPlaneChannel) {
        for (std::size_t at = channel; at < out.rgba.size(); at += 4) {
            in.read(reinterpret_cast<char*>(&out.rgba[at]), sizeof(float));
        }
    }
    if (!in) throw std::runtime_error("ffmpeg wrote less than a picture");
}

}  // namespace

std::optional<Pixels> applyWithFFmpeg(const std::string& cube, const Pixels& in,
                                      const std::string& scratch) {
    if (!runs("ffmpeg -version >/dev/null 2>&1")) return std::nullopt;
    const std::string before = scratch + "/before.raw";
    const std::string after = scratch + "/after.raw";
    writePlanes(before, in);
    const std::string format = " -f rawvideo -pix_fmt gbrapf32le ";
    const std::string size = std::to_string(in.width) + "x" + std::to_string(in.height);
    const std::string command = "ffmpeg -nostdin -loglevel error -y" + format + "-s " + size +
                                " -i '" + before + "' -vf \"lut3d=file='" + cube +
                                "':interp=tetrahedral\"" + format + "'" + after + "'";
    if (!runs(command)) throw std::runtime_error("ffmpeg failed: " + command);
    Pixels out = in;
    readPlanes(after, out);
    return out;
}

}  // namespace peers
