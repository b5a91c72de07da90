// Picture files, read and written through OpenImageIO.
#pragma once

#include <OpenImageIO/imageio.h>

#include <cstdint>
#include <string>
#include <vector>

namespace program {

enum class Depth { k8, kFloat };

// A picture as red, green, blue, alpha, rows top down without padding, in one of two depths:
// `bytes` (0..255) or `floats` (1 is white; not limited) holds 4 * width * height samples, the
// other nothing. Values are those of the file: no colour management, alpha not multiplied in.
struct Picture {
    int width = 0;
    int height = 0;
    Depth depth = Depth::k8;
    bool hasAlpha = false;  // else alpha is full and is not written
    std::vector<std::uint8_t> bytes;
    std::vector<float> floats;
    // Metadata to be kept (windows, aspect ratio, tags); its channels and format do not count.
    OIIO::ImageSpec metadata;
};

// The depth in which a file's picture suffers no loss: 8 bits only for files of 8 bits. Throws
// Failure.
Depth naturalDepth(const std::string& path);

// Reads the first picture of a file. Greys become colours; channels beyond red, green, blue and
// alpha are left out. Throws Failure.
Picture readPicture(const std::string& path, Depth depth);

// Writes the picture in the format that the path's extension names: 8-bit pictures with 8 bits,
// float ones with the most that the format takes (32-bit float in EXR and TIFF, 16 bits in PNG, 8
// in JPEG). The file appears whole or not at all. Throws Failure.
void writePicture(const std::string& path, const Picture& picture);

// The bytes of a JPEG file of the picture. Throws Failure.
std::string encodedJpeg(const Picture& picture);

}  // namespace program
