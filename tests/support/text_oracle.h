// A second reader of the TWLUT text, which hands the header to the library's own scanner in the "C"
// locale: the scanner's behaviour is part of the format.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdio>
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

// Six bits per letter gathered into one long string of zeros and ones per code.
inline std::size_t decodeData(const std::string& text, const ScannedHeader& h, tw::Lut3D& lut) {
    static const std::string letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const float step = (h.hi - h.lo) / 65535.0f;
    std::size_t stored = 0;
    std::string bits;
    for (std::size_t i = static_cast<std::size_t>(h.consumed);
         i < text.size() && text[i] != '=' && stored < lut.data.size(); ++i) {
        const std::size_t value = letters.find(text[i]);
        if (value == std::string::npos) continue;
        for (std::size_t mask = 32; mask != 0; mask /= 2)
            bits += (value & mask) != 0 ? '1' : '0';
        if (bits.size() < 16) continue;
        const unsigned long low = std::stoul(bits.substr(0, 8), nullptr, 2);
        const unsigned long high = std::stoul(bits.substr(8, 8), nullptr, 2);
        lut.data[stored++] = std::fma(static_cast<float>(high * 256 + low), step, h.lo);
        bits.erase(0, 16);
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

}  // namespace twtest
