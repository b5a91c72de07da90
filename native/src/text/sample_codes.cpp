#include "native/src/text/sample_codes.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

#include "native/src/base64.h"

namespace tw {
namespace {

// What a character contributes as the first, second, third or fourth one of a group to the group's
// three bytes, the first byte lowest; kNoSextet when it is not of the alphabet.
constexpr std::uint32_t kNoSextet = std::uint32_t{1} << 31;
using GroupTables = std::array<std::array<std::uint32_t, 256>, 4>;

constexpr GroupTables makeGroupTables() {
    GroupTables tables{};
    for (std::size_t c = 0; c < 256; ++c) {
        if (kSextets[c] < 0) {
            for (auto& table : tables)
                table[c] = kNoSextet;
            continue;
        }
        const auto s = static_cast<std::uint32_t>(kSextets[c]);
        tables[0][c] = s << 2;
        tables[1][c] = s >> 4 | (s & 15) << 12;
        tables[2][c] = s >> 2 << 8 | (s & 3) << 22;
        tables[3][c] = s << 16;
    }
    return tables;
}

constexpr GroupTables kGroups = makeGroupTables();

// Takes codes from a text, kStride bytes a character.
template <std::size_t kStride>
class CodeReader {
public:
    explicit CodeReader(const TextView& text)
        : at_(text.first), end_(text.first + text.length * kStride) {}

    // Writes up to `wanted` codes and returns how many there were before "=" or the end.
    std::size_t read(std::uint16_t* codes, std::size_t wanted) {
        std::size_t count = 0;
        while (count < wanted) {
            if (bitCount_ == 0) count += readGroups(codes + count, wanted - count);
            if (count == wanted || at_ == end_ || *at_ == '=') break;
            if (readCharacter(codes[count])) ++count;
        }
        return count;
    }

private:
    // Three codes for every eight characters, as long as all of these are of the alphabet.
    std::size_t readGroups(std::uint16_t* codes, std::size_t wanted) {
        std::size_t count = 0;
        while (wanted - count >= 3 && end_ - at_ >= static_cast<std::ptrdiff_t>(8 * kStride)) {
            const std::uint32_t low = group(at_);
            const std::uint32_t high = group(at_ + 4 * kStride);
            if (((low | high) & kNoSextet) != 0) break;
            codes[count] = static_cast<std::uint16_t>(low);
            codes[count + 1] = static_cast<std::uint16_t>(low >> 16 | high << 8);
            codes[count + 2] = static_cast<std::uint16_t>(high >> 8);
            count += 3;
            at_ += 8 * kStride;
        }
        return count;
    }

    static std::uint32_t group(const unsigned char* at) {
        return kGroups[0][at[0]] | kGroups[1][at[kStride]] | kGroups[2][at[2 * kStride]] |
               kGroups[3][at[3 * kStride]];
    }

    // Whether the character completes a code.
    bool readCharacter(std::uint16_t& code) {
        const int sextet = kSextets[*at_];
        at_ += kStride;
        if (sextet < 0) return false;
        bits_ = bits_ << 6 | static_cast<unsigned>(sextet);
        bitCount_ += 6;
        if (bitCount_ < 16) return false;
        bitCount_ -= 16;
        const unsigned pair = bits_ >> bitCount_ & 0xFFFF;
        code = static_cast<std::uint16_t>(pair >> 8 | (pair & 0xFF) << 8);
        return true;
    }

    const unsigned char* at_;
    const unsigned char* end_;
    unsigned bits_ = 0;  // the last bitCount_ bits are still to become part of a code
    int bitCount_ = 0;
};

// lo + code * step, rounded once. A fused multiply-add is a call of the library on x86-64. In
// doubles the product is exact and the sum is rounded once, so that rounding it again to a float is
// wrong only where it lies exactly between two floats; batches with such a sum are done again,
// fused. Sums in the range of denormal floats are exact: codes are integers, so that all sums are
// multiples of 2^-149.
class SampleScale {
public:
    SampleScale(float lo, float step)
        : lo_(lo), step_(step), finite_(std::isfinite(lo) && std::isfinite(step)) {}

    void toSamples(const std::uint16_t* codes, std::size_t count, float* samples) const {
        if (finite_ && roundTwice(codes, count, samples)) return;
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = std::fmaf(static_cast<float>(codes[i]), step_, lo_);
    }

private:
    // False when a sum lies between two floats.
    bool roundTwice(const std::uint16_t* codes, std::size_t count, float* samples) const {
        constexpr std::uint64_t kHalf = std::uint64_t{1} << 28;
        constexpr std::uint64_t kBelowFloat = 2 * kHalf - 1;
        const double lo = static_cast<double>(lo_);
        const double step = static_cast<double>(step_);
        std::uint64_t seen = 0;  // 0 - 1 sets the highest bit
        for (std::size_t i = 0; i < count; ++i) {
            const double sum = static_cast<double>(codes[i]) * step + lo;
            seen |= ((std::bit_cast<std::uint64_t>(sum) + kHalf) & kBelowFloat) - 1;
            samples[i] = static_cast<float>(sum);
        }
        return seen >> 63 == 0;
    }

    float lo_;
    float step_;
    bool finite_;
};

template <std::size_t kStride>
bool decode(const TextView& text, const SampleScale& scale, std::vector<float>& values) {
    constexpr std::size_t kBatch = 96;
    std::uint16_t codes[kBatch];
    CodeReader<kStride> reader(text);
    for (std::size_t stored = 0; stored < values.size();) {
        const std::size_t wanted = std::min(kBatch, values.size() - stored);
        const std::size_t count = reader.read(codes, wanted);
        scale.toSamples(codes, count, values.data() + stored);
        stored += count;
        if (count < wanted) return false;
    }
    return true;
}

}  // namespace

bool decodeSamples(const TextView& text, float lo, float step, std::vector<float>& values) {
    const SampleScale scale(lo, step);
    return text.stride == 1 ? decode<1>(text, scale, values) : decode<2>(text, scale, values);
}

}  // namespace tw
