#include "native/src/engine/read_float.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace {

// As strtof, to the bit and to the character.
testing::AssertionResult readsAsStrtof(const std::string& text) {
    char* expectedStop;
    const float expected = std::strtof(text.c_str(), &expectedStop);
    const char* stop = nullptr;
    const float value = tw::readFloat(text.c_str(), &stop);
    const bool same = std::bit_cast<std::uint32_t>(value) == std::bit_cast<std::uint32_t>(expected);
    if (same && stop == expectedStop) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << '"' << text << "\": " << std::hexfloat << value << " for " << expected << ", "
           << std::dec << stop - text.c_str() << " characters for " << expectedStop - text.c_str();
}

std::string significantDigits(double value, int digits) {
    char text[512];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

const char* const kTexts[] = {"",
                              " ",
                              "0",
                              "-0",
                              "+0",
                              "0.",
                              ".0",
                              ".",
                              "-.",
                              "+.5",
                              "-.5e1",
                              "1e",
                              "1e+",
                              "1e-",
                              "1ee1",
                              "1e5x",
                              "1E5",
                              "1e+05",
                              "1e-05",
                              "1e22",
                              "1e23",
                              "1e-22",
                              "1e-23",
                              "1e0000000005",
                              "1e999",
                              "-1e999",
                              "1e-999",
                              "0e999",
                              "0e-5",
                              "1.5.5",
                              "1-2",
                              "--1",
                              "+-1",
                              "0x",
                              "0x1",
                              "0x1p-3",
                              "0X.8",
                              "0x.g",
                              "12x4",
                              "1x",
                              "inf",
                              "-inf",
                              "infinity",
                              "infinit",
                              "nan",
                              "-nan",
                              "nan(1)",
                              "e5",
                              ".e5",
                              "1_000",
                              "1,5",
                              "\t\n\v\f\r 7",
                              "\x85 7",
                              "9007199254740992",
                              "9007199254740993",
                              "9007199254740993e-10",
                              "1234567890123456789",
                              "12345678901234567890",
                              "00000000000000000001",
                              "0.00000000000000000001",
                              "3.4028234663852886e38",
                              "3.4028235677973366e38",
                              "3.4028235677973367e38",
                              "1.1754943508222875e-38",
                              "1.1754942e-38",
                              "1.4e-45",
                              "7e-46",
                              "16777217",
                              "16777219",
                              "33554435",
                              "16777217.0000000000000000001",
                              "0.1",
                              "0.2",
                              "0.3"};

TEST(ReadFloat, readsWhatStrtofReads_andStopsWhereItStops) {
    for (const char* text : kTexts)
        EXPECT_TRUE(readsAsStrtof(text));
}

TEST(ReadFloat, equalsStrtof_forEveryNumberOfSixDecimals) {
    for (int i = 0; i <= 1'000'000; ++i) {
        char text[16];
        std::snprintf(text, sizeof text, "%.6f", i * 1e-6);
        ASSERT_TRUE(readsAsStrtof(text));
    }
}

// The double nearest to a number just beside the middle of two floats can lie on that middle.
TEST(ReadFloat, equalsStrtof_forMidpointsOfTwoFloatsAndTheirNeighbours) {
    std::mt19937 random(1);
    for (int i = 0; i < 100'000; ++i) {
        const auto bits = static_cast<std::uint32_t>(random());
        const auto value = std::bit_cast<float>(bits & 0x7FFFFFFF);
        if (!std::isfinite(value)) continue;
        const double next = std::nextafter(value, 2.0f * value + 1.0f);
        const double middle = (static_cast<double>(value) + next) / 2;
        for (const int digits : {8, 15, 16, 17, 18, 19, 40}) {
            ASSERT_TRUE(readsAsStrtof(significantDigits(middle, digits)));
            ASSERT_TRUE(readsAsStrtof(significantDigits(std::nextafter(middle, 0.0), digits)));
            ASSERT_TRUE(readsAsStrtof(significantDigits(std::nextafter(middle, 1e300), digits)));
        }
    }
}

TEST(ReadFloat, equalsStrtof_forRandomStringsOfNumberCharacters) {
    const std::string characters = "00112345678999..eE+-xX ";
    std::mt19937 random(2);
    for (int i = 0; i < 500'000; ++i) {
        std::string text(random() % 24, ' ');
        for (char& character : text)
            character = characters[random() % characters.size()];
        ASSERT_TRUE(readsAsStrtof(text));
    }
}

}  // namespace
