// The TWLUT text: a LUT as one line of printable text, the form in which it lives in the effect's
// LUT parameter and in which a companion panel writes it there. docs/panel-interface.md describes
// it for the panel.
//
//   TWLUT0                                       no LUT
//   TWLUTP <n>                                   the calibration pattern of size n, 2..64
//   TWLUT1 <size> <lo> <hi> <data>               read only
//   TWLUT2 <id> <size> <lo> <hi> <data>          read only
//   TWLUT3 <id> <name> <size> <lo> <hi> <data>   the form that is written
//
// name is percent-encoded ("-" when empty), size is 2..129, data is base64 of size^3 * 3 unsigned
// 16-bit little-endian codes in the order of Lut3D::data; code q stands for
// lo + q * (hi - lo) / 65535. The input domain is not part of the format: it is always 0..1.
//
// Threads: all functions may be called from any thread at once. They throw only what memory
// exhaustion and container limits throw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "export.h"
#include "lut_engine.h"

namespace tw {

inline constexpr int kMostPatternSteps = 64;
inline constexpr int kMostTextPoints = 129;           // of an axis
inline constexpr std::size_t kLongestTextName = 399;  // percent-encoded
// A header is read from so many characters; that of TWLUT3, whose name may be long, if need be from
// the longer piece.
inline constexpr std::size_t kShortHead = 96;
inline constexpr std::size_t kLongHead = 1200;

// A match id as it is passed on: `long`, where that holds one.
using MatchId = std::conditional_t<sizeof(long) == sizeof(std::int64_t), long, std::int64_t>;

// The TWLUT3 text of lut.size and lut.data with the given id and name (any bytes; those that are
// not letters or digits in the process's locale are percent-encoded). Samples are spread over the
// range they span; NaN samples are stored as code 0. No line end.
TW_EXPORT std::string toEmbeddedText(const Lut3D& lut, MatchId id, const std::string& name);

// Reads any TWLUT text into `lut`, which is reset first. Numbers are read as in the C locale. On
// failure returns false, sets *err (when given) to one fixed message and leaves `lut` partly
// written: to be discarded.
TW_EXPORT bool parseEmbeddedText(const std::string& text, Lut3D& lut, std::string* err);

// The base64 data of a TWLUT text of the forms 1 to 3: where they begin, and how many characters of
// the alphabet a reader takes.
struct EmbeddedData {
    std::size_t start = 0;
    std::size_t characters = 0;
};

// Read from the first kLongHead characters of a text, by parseEmbeddedText's own rules; none where
// that refuses the text before its data, and for the forms without any.
std::optional<EmbeddedData> embeddedData(const std::string& text);

// The TWLUT text held in `count` raw bytes of a parameter, either 8-bit or as 16-bit little-endian
// units; empty when the bytes hold none. `bytes` may be null.
TW_EXPORT std::string embeddedText(const void* bytes, unsigned long count);

// One 16-bit unit per byte of `text`; the bytes of the result are what a parameter stores.
TW_EXPORT std::vector<std::uint16_t> toUtf16(const std::string& text);

}  // namespace tw
