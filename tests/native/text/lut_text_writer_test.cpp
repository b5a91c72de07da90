// toEmbeddedText.
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/locales.h"
#include "tests/support/luts.h"

namespace {

using Codes = std::vector<std::uint16_t>;

tw::Lut3D lutOf(std::vector<float> data, std::int32_t size = 2) {
    tw::Lut3D lut;
    lut.size = size;
    lut.data = std::move(data);
    return lut;
}

// Samples 0, 1 and in between, with the codes they get.
const std::vector<float> kSamples = {0, 1, 0.5f, 0.25f, 0.75f, 0.125f, 0, 1, 0.1f, 0.2f, 0,   1, 0,
                                     1, 0, 1,    0.9f,  0.3f,  0.33f,  1, 0, 0,    1,    0.6f};
const Codes kCodes = {0,     65535, 32768, 16384, 49151, 8192,  0,     65535,
                      6554,  13107, 0,     65535, 0,     65535, 0,     65535,
                      58981, 19661, 21627, 65535, 0,     0,     65535, 39321};

std::string encodedName(const std::string& name) {
    const std::string text = tw::toEmbeddedText(lutOf(kSamples), 0, name);
    const std::string start = "TWLUT3 0 ";
    const std::string end = " 2 0 1 " + twtest::encodeCodes(kCodes);
    if (!text.starts_with(start) || !text.ends_with(end)) return "unexpected text: " + text;
    return text.substr(start.size(), text.size() - start.size() - end.size());
}

TEST(ToEmbeddedText, writesWholeText_ofTwoPointLut) {
    EXPECT_EQ("TWLUT3 42 My%20LUT 2 0 1 " + twtest::encodeCodes(kCodes),
              tw::toEmbeddedText(lutOf(kSamples), 42, "My LUT"));
    EXPECT_EQ(64U, twtest::encodeCodes(kCodes).size());
}

TEST(ToEmbeddedText, ignoresRestOfRecord) {
    tw::Lut3D lut = lutOf(kSamples);
    lut.id = 99;
    lut.name = "other";
    lut.probe = 8;
    twtest::setDomain(lut, 1, -2, 5);
    EXPECT_EQ(tw::toEmbeddedText(lutOf(kSamples), 1, "n"), tw::toEmbeddedText(lut, 1, "n"));
}

TEST(ToEmbeddedText, writesIds_ofEverySize) {
    const std::string rest = " - 2 0 1 " + twtest::encodeCodes(kCodes);
    const long ids[] = {0, -1, 7, std::numeric_limits<long>::max(),
                        std::numeric_limits<long>::min()};
    for (const long id : ids)
        EXPECT_EQ("TWLUT3 " + std::to_string(id) + rest,
                  tw::toEmbeddedText(lutOf(kSamples), id, ""));
}

TEST(ToEmbeddedText, widensRangeByOne_whenSamplesAreEqual) {
    EXPECT_EQ("TWLUT3 0 - 2 0.5 1.5 " + twtest::encodeCodes(Codes(24, 0)),
              tw::toEmbeddedText(twtest::constantLut(0.5f), 0, ""));
    EXPECT_EQ("TWLUT3 0 - 1 -3 -2 AAA=", tw::toEmbeddedText(lutOf({-3.0f}, 1), 0, ""));
}

// One more than a large number is that number again.
TEST(ToEmbeddedText, writesZeroCodes_whenRangeStaysEmpty) {
    EXPECT_EQ("TWLUT3 0 - 2 1.00000002e+20 1.00000002e+20 " + twtest::encodeCodes(Codes(24, 0)),
              tw::toEmbeddedText(twtest::constantLut(1e20f), 0, ""));
}

TEST(ToEmbeddedText, takesRangeZeroToOne_withoutSamples) {
    EXPECT_EQ("TWLUT3 5 - 0 0 1 ", tw::toEmbeddedText(tw::Lut3D(), 5, ""));
}

TEST(ToEmbeddedText, padsBase64_ofEveryLength) {
    EXPECT_EQ("TWLUT3 0 - 2 0 1 AAD//w==", tw::toEmbeddedText(lutOf({0, 1}), 0, ""));
    EXPECT_EQ("TWLUT3 0 - 2 0 1 AAD//wCA", tw::toEmbeddedText(lutOf({0, 1, 0.5f}), 0, ""));
    EXPECT_EQ("TWLUT3 0 - 2 0 1 AAD//wAA//8=", tw::toEmbeddedText(lutOf({0, 1, 0, 1}), 0, ""));
}

TEST(ToEmbeddedText, roundsHalvesAwayFromZero) {
    const std::vector<float> samples = {0, 65535, 0.5f, 1.5f, 2.5f, 0.49999997f, 65534.5f, 3};
    EXPECT_EQ("TWLUT3 0 - 2 0 65535 " + twtest::encodeCodes({0, 65535, 1, 2, 3, 0, 65535, 3}),
              tw::toEmbeddedText(lutOf(samples), 0, ""));
}

TEST(ToEmbeddedText, writesRange_withNineDigits) {
    struct Row {
        float lo, hi;
        const char* text;
    };
    const Row rows[] = {{0.1f, 0.3f, "0.100000001 0.300000012"},
                        {-1.0f / 3.0f, 1.0f / 3.0f, "-0.333333343 0.333333343"},
                        {1e-45f, 1e-40f, "1.40129846e-45 9.9999461e-41"},
                        {-3e38f, 3e38f, "-3.00000001e+38 3.00000001e+38"},
                        {16777216, 33554432, "16777216 33554432"}};
    for (const Row& row : rows) {
        EXPECT_EQ(std::string("TWLUT3 0 - 2 ") + row.text + " AAD//w==",
                  tw::toEmbeddedText(lutOf({row.lo, row.hi}), 0, ""));
    }
}

// The range is spread in double precision: in single precision its width would overflow.
TEST(ToEmbeddedText, spreadsCodes_overRangeWiderThanAFloat) {
    const std::string text = tw::toEmbeddedText(lutOf({-3e38f, 3e38f, 0, 1.5e38f}), 0, "");
    EXPECT_TRUE(text.ends_with(" " + twtest::encodeCodes({0, 65535, 32768, 49151}))) << text;
}

TEST(ToEmbeddedText, storesZero_forSamplesThatAreNoNumbers) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ("TWLUT3 0 - 2 0 1 " + twtest::encodeCodes({0, 0, 65535, 0}),
              tw::toEmbeddedText(lutOf({0, nan, 1, -nan}), 0, ""));
}

TEST(ToEmbeddedText, storesZero_besideInfiniteSamples) {
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ("TWLUT3 0 - 2 0 inf " + twtest::encodeCodes({0, 0, 0}),
              tw::toEmbeddedText(lutOf({0, inf, 1}), 0, ""));
    EXPECT_EQ("TWLUT3 0 - 2 -inf 1 " + twtest::encodeCodes({0, 0, 0}),
              tw::toEmbeddedText(lutOf({0, -inf, 1}), 0, ""));
}

TEST(ToEmbeddedText, encodesNames) {
    struct Row {
        std::string name, encoded;
    };
    const Row rows[] = {{"", "-"},
                        {"-", "-"},
                        {"--", "--"},
                        {"a b/c", "a%20b%2Fc"},
                        {"AZaz09-._~", "AZaz09-._~"},
                        {"%41", "%2541"},
                        {"gr\xC3\xBCn", "gr%C3%BCn"},
                        {std::string("a\0b", 3), "a%00b"},
                        {"\n\t\r\x7F\x80\xFF", "%0A%09%0D%7F%80%FF"},
                        {std::string(1000, 'x'), std::string(1000, 'x')},
                        {std::string(500, ' '), [] {
                             std::string blanks;
                             for (int i = 0; i < 500; ++i)
                                 blanks += "%20";
                             return blanks;
                         }()}};
    for (const Row& row : rows)
        EXPECT_EQ(row.encoded, encodedName(row.name)) << row.name;
}

TEST(ToEmbeddedText, encodesEachByte_asLetterOrEscape) {
    const std::string kept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    const std::string hex = "0123456789ABCDEF";
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::string name = {'x', static_cast<char>(static_cast<unsigned char>(byte))};
        std::string expected = name;
        if (kept.find(name[1]) == std::string::npos)
            expected = std::string("x%") + hex[byte / 16] + hex[byte % 16];
        EXPECT_EQ(expected, encodedName(name)) << "byte " << byte;
    }
}

TEST(ToEmbeddedText, keepsLettersOfTheLocale) {
    const twtest::ScopedLocale locale("de_DE.ISO-8859-1", "ISO-8859-1");
    if (!locale.active()) GTEST_SKIP() << "no Latin-1 locale, and no way to make one";
    EXPECT_EQ("gr\xFCn%20%A7", encodedName("gr\xFCn \xA7"));
}

TEST(ToEmbeddedText, writesFullStop_inDecimalCommaLocale) {
    const twtest::CommaLocale locale;
    if (!locale.usable()) GTEST_SKIP() << "no locale with a decimal comma, and no way to make one";
    EXPECT_EQ("TWLUT3 1234567 gr%C3%BCn 2 0.5 1.5 " + twtest::encodeCodes(Codes(24, 0)),
              tw::toEmbeddedText(twtest::constantLut(0.5f), 1234567, "gr\xC3\xBCn"));
}

}  // namespace
