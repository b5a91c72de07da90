#include "native/src/engine/read_float.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace tw {
namespace {

// Powers of ten that a double holds exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::ptrdiff_t kMostPower = 22;

constexpr std::uint64_t kExactInDouble = std::uint64_t{1} << 53;
constexpr std::ptrdiff_t kMostDigits = 19;  // more might not fit 64 bits

// What isspace takes for white space in the C locale.
bool isSpace(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The digits of a number, without sign and point, as far as they were read.
struct Decimal {
    std::uint64_t digits = 0;     // undefined once there are too many
    std::ptrdiff_t count = 0;     // leading zeros included
    std::ptrdiff_t exponent = 0;  // power of ten that the last digit counts for

    const char* readDigits(const char* at) {
        const char* const first = at;
        for (; isDigit(*at); ++at)
            digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        count += at - first;
        return at;
    }
};

// Reads "e-05" and the like; an "e" without digits behind it belongs to what follows the number.
// Exponents of four digits and more are left to strtof: false.
bool readExponent(const char*& at, std::ptrdiff_t& exponent) {
    const char* digit = at + 1;
    const bool negative = *digit == '-';
    if (negative || *digit == '+') ++digit;
    if (!isDigit(*digit)) return true;
    int value = 0;
    const char* const first = digit;
    for (; isDigit(*digit); ++digit) {
        if (digit - first == 3) return false;
        value = value * 10 + (*digit - '0');
    }
    exponent += negative ? -value : value;
    at = digit;
    return true;
}

// The nearest float to `value`, itself the double nearest to the number meant: 0, or from 1e-22 to
// 2^53 * 1e22, where floats are spaced by their leading bit. Rounding twice is wrong there only
// where the double lies exactly between two floats, as the number may have been on either side of
// it; such values are refused: false.
bool narrow(double value, float& narrowed) {
    constexpr std::uint64_t kBelowFloat = (std::uint64_t{1} << 29) - 1;
    constexpr std::uint64_t kMidpoint = std::uint64_t{1} << 28;
    if ((std::bit_cast<std::uint64_t>(value) & kBelowFloat) == kMidpoint) return false;
    narrowed = static_cast<float>(value);
    return true;
}

// Reads the number at `at` when it is a plain decimal one whose value takes one exact operation on
// doubles; false, and nothing is changed, for all others.
bool readPlain(const char* at, const char** stop, float* value) {
    const bool negative = *at == '-';
    if (negative || *at == '+') ++at;
    Decimal decimal;
    at = decimal.readDigits(at);
    // "0x" begins a number of another base.
    if ((*at | 0x20) == 'x') return false;
    if (*at == '.') {
        const char* const point = at;
        at = decimal.readDigits(point + 1);
        decimal.exponent = point + 1 - at;
    }
    if (decimal.count == 0 || decimal.count > kMostDigits) return false;
    if ((*at | 0x20) == 'e' && !readExponent(at, decimal.exponent)) return false;
    if (decimal.digits > kExactInDouble) return false;
    if (decimal.exponent < -kMostPower || decimal.exponent > kMostPower) return false;
    // Both operands are exact and the result is rounded once: the double nearest to the number.
    const auto digits = static_cast<double>(decimal.digits);
    const double exact = decimal.exponent < 0 ? digits / kPowersOfTen[-decimal.exponent]
                                              : digits * kPowersOfTen[decimal.exponent];
    float narrowed;
    if (!narrow(exact, narrowed)) return false;
    *value = negative ? -narrowed : narrowed;
    *stop = at;
    return true;
}

}  // namespace

float readFloat(const char* at, const char** stop) {
    const char* number = at;
    while (isSpace(*number))
        ++number;
    float value;
    if (readPlain(number, stop, &value)) return value;
    char* end;
    value = std::strtof(at, &end);
    *stop = end;
    return value;
}

}  // namespace tw
