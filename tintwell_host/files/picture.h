// Picture files, read and written through OpenImageIO.
#pragma once

#include <OpenImageIO/imageio.h>

#include <cstdint>
#include <optional>
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

// Decodes the first picture of a file whose bytes these are; `path` names it in messages. Without a
// depth: the one in which the picture suffers no loss, 8 bits only for files of 8 bits. Greys
// become colours; channels beyond red, green, blue and alpha are left out. Throws Failure.
Picture decodePicture(const std::string& path, const std::string& bytes,
                      std::optional<Depth> depth);

struct PictureFacts {
    std::int64_t pixels;
    Depth depth;  // in which it suffers no loss
};
// Of that picture, from its header alone. Throws Failure.
PictureFacts inspectPicture(const std::string& path, const std::string& bytes);

// Reads and decodes. Throws Failure.
Picture readPicture(const std::string& path, Depth depth);

struct WriteOptions {
    std::string compression;  // by checkCompression(); empty: the format's default
    std::string fingerprint;  // kept where holdsFingerprint(); empty: none
};

// Throws Failure for a compression that the format of `path` does not have.
void checkCompression(const std::string& path, const std::string& compression);

// Whether a file that decodes has its end as well: readers of some formats make up what is missing.
bool hasItsEnd(const std::string& path, const std::string& bytes);

// Whether files of this format have room for a fingerprint, and the one of a picture that was read,
// empty for none.
bool holdsFingerprint(const std::string& path);
std::string fingerprintOf(const Picture& picture);

// The bytes of a file with the picture, in the format that the path's extension names: 8-bit
// pictures with 8 bits, float ones with the most that the format takes (32-bit float in EXR and
// TIFF, 16 bits in PNG and DPX, 8 in JPEG). They depend on the picture and the options alone.
// Throws Failure.
std::string encodePicture(const std::string& path, const Picture& picture,
                          const WriteOptions& options);

// Encodes and writes; the file appears whole or not at all. Throws Failure.
void writePicture(const std::string& path, const Picture& picture,
                  const WriteOptions& options = {});

}  // namespace program
