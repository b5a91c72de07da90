// readParameter: what the reader of the tests gives, which copies the text and takes one character
// at a time, for every kind of bytes.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "native/src/lut_text.h"
#include "native/src/text/lut_text_reader.h"
#include "tests/support/luts.h"
#include "tests/support/random.h"
#include "tests/support/text_oracle.h"

namespace {

std::string wide(const std::string& text) {
    const std::vector<std::uint16_t> units = tw::toUtf16(text);
    return {reinterpret_cast<const char*>(units.data()), units.size() * 2};
}

// Memory of its very size, so that reading past it is noticed by the sanitizer.
void expectSame(const std::string& bytes, const std::string& what) {
    const std::vector<char> exact(bytes.begin(), bytes.end());
    const twtest::ReadText expected = twtest::readParameterSlowly(exact.data(), exact.size());
    tw::Lut3D lut;
    std::string error;
    EXPECT_EQ(expected.ok, tw::readParameter(exact.data(), exact.size(), lut, &error)) << what;
    EXPECT_EQ(expected.error, error) << what;
    EXPECT_TRUE(twtest::sameLut(expected.lut, lut)) << what;
}

void expectSameInBothWidths(const std::string& text, const std::string& what) {
    expectSame(text, what + ", bytes");
    expectSame(wide(text), what + ", units");
}

// Characters that a LUT of `size` points takes, all of the alphabet, none twice in a row.
std::string dataOf(int size) {
    std::string data;
    for (std::size_t i = 0; i < tw::latticeFloats(size) * 16 / 6; ++i) {
        data += "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"[i * 29 % 61];
    }
    return data;
}

const std::string kHead = "TWLUT1 6 -0.25 1.75 ";

TEST(ReadParameter, readsWholeTexts_inBothWidths) {
    for (int size = 2; size <= 12; ++size) {
        const std::string text = "TWLUT1 " + std::to_string(size) + " 0 1 " + dataOf(size);
        expectSameInBothWidths(text, std::to_string(size));
        tw::Lut3D lut;
        EXPECT_TRUE(tw::readParameter(text.data(), text.size(), lut, nullptr));
        EXPECT_EQ(lut.size, size);
    }
}

TEST(ReadParameter, isCutShort_atEveryCharacterOfTheLastBatches) {
    const std::string data = dataOf(6);
    for (std::size_t length = 0; length <= data.size(); length += length < 1400 ? 23 : 1)
        expectSameInBothWidths(kHead + data.substr(0, length), std::to_string(length));
}

TEST(ReadParameter, endsAtEqualsSign_wherever) {
    for (std::size_t at = 0; at < 40; ++at) {
        std::string data = dataOf(6);
        data[at] = '=';
        expectSameInBothWidths(kHead + data, std::to_string(at));
    }
    expectSameInBothWidths(kHead + dataOf(6) + "=", "behind the data");
}

TEST(ReadParameter, passesOverWhatIsNotOfTheAlphabet_wherever) {
    for (const std::string stray :
         {" ", "\n", "\r\n", "-", "%", "\x80", "\xFF", "       ", "::::::::"}) {
        for (std::size_t at = 0; at < 24; ++at) {
            std::string data = dataOf(6);
            expectSameInBothWidths(kHead + data.insert(at, stray), stray + std::to_string(at));
        }
    }
    std::string data = dataOf(6);
    expectSameInBothWidths(kHead + data.insert(11, 1, '\0'), "zero byte");
}

TEST(ReadParameter, readsLinesOfAnyLength) {
    for (std::size_t line = 1; line <= 80; ++line) {
        std::string data = dataOf(6);
        for (std::size_t at = line; at < data.size(); at += line + 1)
            data.insert(at, 1, '\n');
        expectSameInBothWidths(kHead + data, std::to_string(line));
    }
}

TEST(ReadParameter, leavesWhatFollowsTheData) {
    expectSameInBothWidths(kHead + dataOf(6) + dataOf(2), "more data");
    expectSameInBothWidths(kHead + dataOf(6) + " and words", "words");
    expectSameInBothWidths(kHead + dataOf(6) + std::string(1, '\0'), "a zero");
}

TEST(ReadParameter, refusesAHighByte_anywhere) {
    std::string text = kHead + dataOf(6) + " behind";
    const std::string units = wide(text);
    for (std::size_t at = 11; at < units.size(); at += at < 100 ? 2 : 34) {
        std::string bytes = units;
        bytes[at] = '\x01';
        expectSame(bytes, std::to_string(at));
        tw::Lut3D lut;
        std::string error;
        EXPECT_FALSE(tw::readParameter(bytes.data(), bytes.size(), lut, &error));
        EXPECT_EQ("parameter does not hold TWLUT text", error);
    }
    std::string last = units;
    last.back() = '\x01';
    expectSame(last, "the last byte");
}

TEST(ReadParameter, readsMixedWidths) {
    expectSame(wide(kHead) + dataOf(6), "bytes behind a head in units");
    expectSame(kHead + wide(dataOf(6)), "units behind a head in bytes");
    expectSame(wide(kHead + dataOf(6)) + "A", "an odd byte at the end");
    expectSame("TWLUT" + wide("1 6 0 1 " + dataOf(6)), "units behind the mark");
}

TEST(ReadParameter, isNoText_forOtherBytes) {
    for (const std::string bytes : {"", "TWLUT", "twlut1", "TWLUTX", "xTWLUT0", "T", "TWLUT0"}) {
        expectSame(bytes, bytes);
        expectSame(wide(bytes), bytes + " in units");
    }
    tw::Lut3D lut;
    EXPECT_FALSE(tw::readParameter(nullptr, 100, lut, nullptr));
}

// Every code once: sums that lie exactly between two floats, and beside it.
TEST(ReadParameter, roundsOnce_whateverTheRange) {
    const char* ranges[] = {"0 1",          "-0 1",
                            "1 0",          "0 65535",
                            "0 65534.996",  "1 1.0009766",
                            "1 1.0000001",  "-1 1",
                            "0.1 0.3",      "16777215 16842750",
                            "0 1e-30",      "0 1e-40",
                            "1e-40 2e-40",  "1e-38 3e-38",
                            "-1e-38 1e-38", "-2e38 2e38",
                            "0 3e38",       "3e38 -3e38",
                            "0 1e39",       "inf 1",
                            "0 inf",        "nan 1",
                            "0 nan",        "-inf inf",
                            "5 5",          "1e-35 1",
                            "-1e-20 1e-20", "0 1.5259022e-05"};
    tw::Lut3D all;
    all.size = 29;  // 73167 samples
    std::string data;
    unsigned bits = 0;
    int bitCount = 0;
    for (unsigned i = 0; i < tw::latticeFloats(29) * 2; ++i) {
        const unsigned code = i / 2 & 0xFFFF;
        bits = bits << 8 | (i % 2 == 0 ? code & 0xFF : code >> 8);
        for (bitCount += 8; bitCount >= 6; bitCount -= 6) {
            data += "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"
                [bits >> (bitCount - 6) & 63];
        }
    }
    data += std::string(8, 'A');
    for (const std::string range : ranges)
        expectSame("TWLUT1 29 " + range + " " + data, range);
}

TEST(ReadParameter, roundsOnce_forRandomRanges) {
    twtest::Random random(5);
    for (int i = 0; i < 400; ++i) {
        char range[80];
        const auto number = [&] {
            return std::ldexp(static_cast<double>(random.between(-1.0f, 1.0f)),
                              random.below(60) - 30);
        };
        std::snprintf(range, sizeof range, "%.9g %.9g ", number(), number());
        expectSame("TWLUT1 6 " + std::string(range) + dataOf(6), range);
    }
}

}  // namespace
