// The LUT engine: the record that holds a 3D look-up table, the reader of .cube files, tetrahedral
// interpolation, its application to whole pictures, and the calibration pattern, which is called
// "probe" in names.
//
// Threads: every function may be called from any thread at once, also on the same Lut3D, which none
// of them but parseCube changes. apply8, applyF, fillProbe8 and fillProbeF start worker threads of
// their own and have joined them when they return.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "export.h"

namespace tw {

// A cube of output colours over an RGB input lattice, or a request for the calibration pattern.
// A plain value; decoded LUTs are shared as pointers to const and never change after that.
struct Lut3D {
    // Lattice points per axis. 0: no LUT. A parsed .cube has 2..256, a TWLUT text 2..129.
    std::int32_t size = 0;
    // Identifier of the colour match that made this LUT; 0 when unknown.
    std::int64_t id = 0;
    // Not 0: draw the calibration pattern of this many steps per channel instead of applying a LUT.
    std::int32_t probe = 0;
    // Name of the colour match, as its writer spelled it (UTF-8); may be empty.
    std::string name;
    // Input values, red, green, blue, that meet the first and the last lattice point. A record that
    // a parser called valid has domainMax > domainMin on each channel.
    float domainMin[3] = {0.0f, 0.0f, 0.0f};
    float domainMax[3] = {1.0f, 1.0f, 1.0f};
    // size^3 output triples, red, green, blue. Lattice order, red fastest, then green, then blue:
    // the triple of lattice point (r, g, b) starts at latticeIndex(size, r, g, b). Empty when size
    // is 0.
    std::vector<float> data;
};

// What a decoded LUT is for.
enum class LutKind {
    kNone,     // nothing: pictures stay as they are
    kPattern,  // the calibration pattern of `probe` steps is drawn
    kLut,      // pictures are graded
};

// Of a null pointer: none.
inline LutKind kindOf(const Lut3D* lut) {
    if (lut && lut->probe != 0) return LutKind::kPattern;
    return lut && lut->size != 0 ? LutKind::kLut : LutKind::kNone;
}

// First element of lattice point (r, g, b) in Lut3D::data.
constexpr std::ptrdiff_t latticeIndex(std::ptrdiff_t size, std::ptrdiff_t r, std::ptrdiff_t g,
                                      std::ptrdiff_t b) {
    return ((b * size + g) * size + r) * 3;
}

// Number of floats in Lut3D::data of a LUT with `size` points per axis.
constexpr std::size_t latticeFloats(std::int32_t size) {
    const auto points = static_cast<std::size_t>(size);
    return points * points * points * 3;
}

// Where the four channels stand in a pixel. Any other value means RGBA.
enum ChannelOrder : std::int32_t { kOrderBGRA = 0, kOrderARGB = 1, kOrderRGBA = 2 };

// View of a picture with four 8-bit channels a pixel. Owns nothing; the pixels must stay valid for
// the call. Row y starts at pixels + y * rowBytes, pixel x of a row 4 * x bytes further on.
// rowBytes may be negative (rows stored bottom up) and may hold padding; sizes below 1 mean an
// empty picture.
struct Image8 {
    std::uint8_t* pixels = nullptr;
    std::int32_t width = 0;     // pixels
    std::int32_t height = 0;    // rows
    std::int64_t rowBytes = 0;  // bytes from one row's start to the next one's
    std::int32_t order = kOrderBGRA;
};

// The same with four 32-bit floats a pixel; rowBytes still counts bytes.
struct ImageF {
    float* pixels = nullptr;
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int64_t rowBytes = 0;
    std::int32_t order = kOrderBGRA;
};

// Reads the whole text of a .cube file (3D cubes of 2..256 points, lines ending in LF or CRLF) into
// `lut`, which is overwritten. Numbers are read as strtof and atoi read them in the C locale,
// whatever locale the process uses. On failure returns false, sets *error (when given) to one fixed
// message and leaves `lut` partly written: to be treated as invalid. Throws only std::bad_alloc.
TW_EXPORT bool parseCube(const std::string& text, Lut3D& lut, std::string* error);

// Maps one colour by tetrahedral interpolation, the reference definition of the colour transform.
// `lut` must be valid with size >= 2 (nothing is checked). in, out: red, green, blue; `in` in the
// units of the LUT's domain, `out` not clamped. The two may be the same array. Never throws.
TW_EXPORT void sampleTetra(const Lut3D& lut, const float* in, float* out);

// Grades the common top-left area of src and dst: out = in + (lut(in) - in) * amount, amount as a
// fraction (1 = the LUT fully), not clamped. Alpha is carried over untouched. src and dst may have
// different channel orders and may be the same memory; pixels of dst outside the common area are
// not touched. 8-bit results are rounded half up and clamped to 0..255; float ones are not clamped.
// `lut` must be valid with size >= 2. Works on the calling thread where workers cannot be started.
TW_EXPORT void apply8(const Lut3D& lut, const Image8& src, const Image8& dst, float amount);
TW_EXPORT void applyF(const Lut3D& lut, const ImageF& src, const ImageF& dst, float amount);

// Grid of the calibration pattern with n steps per channel on a frame of width x height pixels: the
// columns and rows of near-square patches that hold n^3 patches. n is meant to be 2..64.
TW_EXPORT void probeGrid(int n, int width, int height, int* cols, int* rows);

// Colour (red, green, blue, 0..1) of pixel (x, y), from the top left, of that pattern. Patches run
// left to right, then top to bottom, red fastest as in Lut3D::data; pixels past the last patch are
// black.
TW_EXPORT void probeColour(int n, int cols, int rows, int width, int height, int x, int y,
                           float* out);

// Fills the whole image with the opaque pattern of n steps per channel.
TW_EXPORT void fillProbe8(int n, const Image8& image);
TW_EXPORT void fillProbeF(int n, const ImageF& image);

}  // namespace tw
