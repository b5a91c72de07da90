// A second reader of the LUT parameter and its TWLUT text: extracts the text first, scans its
// header with the library's own scanner in the "C" locale, whose behaviour is part of the format,
// and takes one character and one fused multiply-add at a time.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>

#include "native/src/lut_engine.h"

namespace twtest {

struct ReadText {
    bool ok = false;
    std::string error;
    tw::Lut3D lut;
};

struct ScannedHeader {
    long id = 0;
    std::string name;
    int size = 0;
    float lo = 0;
    float hi = 0;
    int consumed = 0;
    bool ok = false;
};

inline ScannedHeader scanForm3(const std::string& head) {
    ScannedHeader h;
    char name[400] = {};
    const int values = std::sscanf(head.c_str(), "TWLUT3 %ld %399s %d %f %f %n", &h.id, name,
                                   &h.size, &h.lo, &h.hi, &h.consumed);
    h.name = name;
    h.ok = values == 5 && h.consumed >= 1;
    return h;
}

inline ScannedHeader scanForm2(const std::string& head) {
    ScannedHeader h;
    const int values = std::sscanf(head.c_str(), "TWLUT2 %ld %d %f %f %n", &h.id, &h.size, &h.lo,
                                   &h.hi, &h.consumed);
    h.ok = values == 4 && h.consumed > 0;
    return h;
}

inline ScannedHeader scanForm1(const std::string& head) {
    ScannedHeader h;
    const int values =
        std::sscanf(head.c_str(), "TWLUT1 %d %f %f %n", &h.size, &h.lo, &h.hi, &h.consumed);
    h.ok = values == 3 && h.consumed > 0;
    return h;
}

// The size that the text's header tells; 0 when it is too large or there is none.
inline std::int32_t announcedSize(const std::string& text) {
    for (const auto& header : {scanForm3(text.substr(0, 1200)), scanForm2(text.substr(0, 96)),
                               scanForm1(text.substr(0, 96))}) {
        if (header.ok) return header.size > 129 ? 0 : header.size;
    }
    return 0;
}

inline std::string decodeName(const std::string& encoded) {
    if (encoded == "-") return "";
    std::string name;
    for (std::size_t i = 0; i < encoded.size(); ++i) {
        unsigned value = 0;
        if (encoded[i] == '%' && i + 2 < encoded.size() &&
            std::sscanf(encoded.substr(i + 1, 2).c_str(), "%2x", &value) == 1) {
            name += static_cast<char>(static_cast<unsigned char>(value & 0xFFU));
            i += 2;
        } else {
            name += encoded[i];
        }
    }
    return name;
}

// Six bits for each letter of the alphabet, -1 for other characters.
inline std::array<int, 256> makeSextets() {
    std::array<int, 256> sextets;
    sextets.fill(-1);
    const std::string letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    for (std::size_t i = 0; i < letters.size(); ++i)
        sextets[static_cast<unsigned char>(letters[i])] = static_cast<int>(i);
    return sextets;
}

inline std::size_t decodeData(const std::string& text, const ScannedHeader& h, tw::Lut3D& lut) {
    static const std::array<int, 256> sextets = makeSextets();
    const float step = (h.hi - h.lo) / 65535.0f;
    std::size_t stored = 0;
    unsigned bits = 0;
    int bitCount = 0;
    for (std::size_t i = static_cast<std::size_t>(h.consumed);
         i < text.size() && text[i] != '=' && stored < lut.data.size(); ++i) {
        const int sextet = sextets[static_cast<unsigned char>(text[i])];
        if (sextet < 0) continue;
        bits = bits << 6 | static_cast<unsigned>(sextet);
        bitCount += 6;
        if (bitCount < 16) continue;
        bitCount -= 16;
        const unsigned pair = bits >> bitCount & 0xFFFF;
        const unsigned code = pair >> 8 | (pair & 0xFF) << 8;
        lut.data[stored++] = std::fma(static_cast<float>(code), step, h.lo);
    }
    return stored;
}

inline ReadText failedText(ReadText read, const char* message) {
    read.ok = false;
    read.error = message;
    return read;
}

inline ReadText readProbeText(const std::string& head) {
    ReadText read;
    int steps = 0;
    if (std::sscanf(head.c_str(), "TWLUTP %d", &steps) != 1 || steps < 2 || steps > 64)
        return failedText(read, "bad calibration pattern size");
    read.lut.probe = steps;
    read.ok = true;
    return read;
}

inline ReadText readTextSlowly(const std::string& text) {
    ReadText read;
    const std::string form = text.substr(0, 6);
    const std::string head = text.substr(0, 96);
    read.ok = form == "TWLUT0";
    if (read.ok) return read;
    if (form == "TWLUTP") return readProbeText(head);
    ScannedHeader h;
    if (form == "TWLUT3") {
        h = scanForm3(head);
        if (!h.ok) h = scanForm3(text.substr(0, 1200));
        if (!h.ok) {
            return failedText(read,
                              "not a Tintwell LUT "
                              "(expected TWLUT3 <id> <name> <size> <lo> <hi> <data>)");
        }
        read.lut.name = decodeName(h.name);
    } else {
        h = form == "TWLUT2" ? scanForm2(head) : scanForm1(head);
        if (!h.ok) {
            return failedText(read,
                              "not a Tintwell LUT (expected TWLUT2 <id> <size> <lo> <hi> <data>)");
        }
    }
    read.lut.id = h.id;
    if (h.size < 2 || h.size > 129) return failedText(read, "LUT size out of range");
    read.lut.size = h.size;
    read.lut.data.assign(tw::latticeFloats(h.size), 0.0f);
    read.ok = decodeData(text, h, read.lut) == read.lut.data.size();
    if (!read.ok) read.error = "LUT data is truncated";
    return read;
}

// The low bytes of 16-bit units; empty when one of them has a high byte.
inline std::string narrowed(const unsigned char* bytes, std::size_t count) {
    std::string text(count / 2, '\0');
    unsigned highBits = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        text[i] = static_cast<char>(bytes[2 * i]);
        highBits |= bytes[2 * i + 1];
    }
    if (highBits != 0) text.clear();
    return text;
}

// Empty when the bytes hold no text.
inline std::string extractText(const void* bytes, std::size_t count) {
    if (count < 6) return "";
    if (std::memcmp(bytes, "TWLUT", 5) == 0) return {static_cast<const char*>(bytes), count};
    if (count < 10 || std::memcmp(bytes, "T\0W\0L\0U\0T\0", 10) != 0) return "";
    return narrowed(static_cast<const unsigned char*>(bytes), count);
}

inline ReadText readParameterSlowly(const void* bytes, std::size_t count) {
    const std::string text = extractText(bytes, count);
    return text.empty() ? failedText({}, "parameter does not hold TWLUT text")
                        : readTextSlowly(text);
}

}  // namespace twtest
