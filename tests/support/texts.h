// TWLUT texts and the bytes in which a LUT parameter holds them.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/effect_fixture.h"
#include "tests/support/luts.h"

namespace twtest {

inline Bytes bytesOf(const std::string& text) {
    return Bytes(text.begin(), text.end());
}

// Two bytes a character, the low one first.
inline Bytes widened(const std::string& text) {
    Bytes bytes;
    for (const char character : text) {
        bytes.push_back(static_cast<std::uint8_t>(character));
        bytes.push_back(0);
    }
    return bytes;
}

// The same with the high byte first.
inline Bytes bigEndian(const std::string& text) {
    Bytes bytes;
    for (const char character : text) {
        bytes.push_back(0);
        bytes.push_back(static_cast<std::uint8_t>(character));
    }
    return bytes;
}

inline Bytes emptyLut() {
    return widened("TWLUT0");
}

// Two points an axis, all of them (0.25, 0.25, 0.25): code 0 stands for just that.
inline std::string quarterText() {
    const std::vector<std::uint16_t> codes(24, 0);
    return "TWLUT3 0 - 2 0.25 1.25 " + encodeCodes(codes);
}

// Two points an axis, the one at (r, g, b) holding (g, b, r): red becomes what green was, green
// what blue was, blue what red was.
inline std::string rotationText() {
    std::vector<std::uint16_t> codes;
    for (unsigned node = 0; node < 8; ++node) {
        const bool r = (node & 1U) != 0, g = (node & 2U) != 0, b = (node & 4U) != 0;
        for (const bool value : {g, b, r})
            codes.push_back(value ? 65535 : 0);
    }
    return "TWLUT3 7 Turn 2 0 1 " + encodeCodes(codes);
}

// A LUT of random points.
inline std::string scatteredText(int size, std::uint64_t seed, long id = 0,
                                 const std::string& name = "") {
    return tw::toEmbeddedText(scatteredLut(size, seed), id, name);
}

inline tw::Lut3D parsed(const std::string& text) {
    tw::Lut3D lut;
    std::string failure;
    EXPECT_TRUE(tw::parseEmbeddedText(text, lut, &failure)) << failure;
    return lut;
}

}  // namespace twtest
