// What a stored value decodes to, in readable text that a program can
// compare.
#pragma once

#include <array>
#include <bit>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"

namespace stored_values {

// What tw::embeddedLut makes of a value's bytes.
struct Decoded {
    std::shared_ptr<const tw::Lut3D> lut;  // null: no LUT
    std::string error;                     // why not; empty where the value says "no LUT"
};

// FNV-1a, 64 bits, over the samples' bytes, of each sample the lowest first.
inline std::uint64_t digestOf(const std::vector<float>& samples) {
    std::uint64_t digest = 0xCBF29CE484222325U;
    for (const float sample : samples) {
        const auto bits = std::bit_cast<std::uint32_t>(sample);
        for (int shift = 0; shift < 32; shift += 8) {
            digest ^= bits >> shift & 0xFF;
            digest *= 0x100000001B3U;
        }
    }
    return digest;
}

// Printed, up to 199 characters.
[[gnu::format(printf, 1, 2)]] inline std::string line(const char* format, ...) {
    std::array<char, 200> text;
    std::va_list values;
    va_start(values, format);
    std::vsnprintf(text.data(), text.size(), format, values);
    va_end(values);
    return text.data();
}

// Visible ASCII as it is, every other byte and "%" as "%" and two hexadecimal digits.
inline std::string visible(const std::string& name) {
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = byte > ' ' && byte < 0x7F && byte != '%';
        text += plain ? std::string(1, c) : line("%%%02X", static_cast<unsigned>(byte));
    }
    return text.empty() ? "(none)" : text;
}

// One sample, with enough digits to restore it, and its bits.
inline std::string sampleLine(const std::vector<float>& samples, std::size_t at) {
    return line("sample %zu: %.9g 0x%08X", at, static_cast<double>(samples[at]),
                std::bit_cast<std::uint32_t>(samples[at]));
}

inline std::vector<std::string> lutLines(const tw::Lut3D& lut) {
    std::vector<std::string> lines = {
        line("size %d", static_cast<int>(lut.size)),
        line("id %lld", static_cast<long long>(lut.id)),
        line("probe %d", static_cast<int>(lut.probe)),
        "name " + visible(lut.name),
        line("domain %g %g %g to %g %g %g", static_cast<double>(lut.domainMin[0]),
             static_cast<double>(lut.domainMin[1]), static_cast<double>(lut.domainMin[2]),
             static_cast<double>(lut.domainMax[0]), static_cast<double>(lut.domainMax[1]),
             static_cast<double>(lut.domainMax[2])),
        line("samples %zu, digest 0x%016llX", lut.data.size(),
             static_cast<unsigned long long>(digestOf(lut.data)))};
    const std::size_t count = lut.data.size();
    if (count == 0) return lines;
    for (const std::size_t at : {std::size_t{0}, std::size_t{1}, count / 3, count / 2, count - 1})
        lines.push_back(sampleLine(lut.data, at));
    return lines;
}

// The lines below "file NAME" in expectations.txt.
inline std::vector<std::string> linesOf(std::size_t bytes, const Decoded& decoded) {
    std::vector<std::string> lines = {line("bytes %zu", bytes)};
    if (!decoded.lut) {
        lines.push_back(decoded.error.empty() ? "no LUT" : "error " + decoded.error);
        return lines;
    }
    for (std::string& text : lutLines(*decoded.lut))
        lines.push_back(std::move(text));
    return lines;
}

}  // namespace stored_values
