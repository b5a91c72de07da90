// .cube texts as programs write them, editors save them and transfers damage them: a name, the
// text, and what the parser makes of it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/native/engine/cube_rows.h"
#include "tests/support/cube_messages.h"
#include "tests/support/luts.h"

namespace twtest {
namespace {

// The cube that the texts are about: its size, its first line and the seven others.
const std::string kSize = "LUT_3D_SIZE 2\n";
const std::string kFirst = "0 0.25 0.5\n";
const std::string kRest = "1 2 3\n4 5 6\n7 8 9\n10 11 12\n13 14 15\n16 17 18\n-19 20.5 1e3\n";
const std::string kBody = kFirst + kRest;
const std::string kPlain = kSize + kBody;
const std::vector<float> kValues = {0,  0.25f, 0.5f, 1,  2,  3,  4,  5,  6,  7,   8,     9,
                                    10, 11,    12,   13, 14, 15, 16, 17, 18, -19, 20.5f, 1000};

// The cube, but for its first values; other sizes hold zeros.
CubeOutcome taken(const std::vector<float>& first = {}, int size = 2) {
    CubeOutcome outcome{nullptr, blankLut(size)};
    if (size == 2) outcome.lut.data = kValues;
    std::copy(first.begin(), first.end(), outcome.lut.data.begin());
    return outcome;
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

// The cube with its lines ending like that.
std::string ending(const std::string& end) {
    return replaced(kPlain, "\n", end);
}

// The cube with other numbers in its first line.
std::string numbers(const std::string& first) {
    return kSize + first + "\n" + kRest;
}

std::string bytes(const char* text, std::size_t count) {
    return {text, count};
}

// Two bytes a character, the low one first or last.
std::string wide(const std::string& text, bool lowFirst) {
    std::string units;
    for (const char c : text)
        units += lowFirst ? std::string{c, '\0'} : std::string{'\0', c};
    return units;
}

std::string zeros(int size) {
    std::string text;
    for (int i = 0; i < size * size * size; ++i)
        text += "0 0 0\n";
    return text;
}

// In UTF-8, as word processors substitute them for the plain ones.
const std::string kNoBreak = "\xC2\xA0";
const std::string kMinus = "\xE2\x88\x92";

const float kInf = std::strtof("inf", nullptr);
const float kNan = std::strtof("nan", nullptr);

INSTANTIATE_TEST_SUITE_P(
    Titles, CubeText,
    ::testing::Values(
        CubeRow{"Quoted", "TITLE \"Warm\"\n" + kPlain, taken()},
        CubeRow{"Unquoted", "TITLE Warm Look\n" + kPlain, taken()},
        CubeRow{"QuotesInside", "TITLE \"the \"warm\" one\"\n" + kPlain, taken()},
        CubeRow{"QuoteNotClosed", "TITLE \"Warm\n" + kPlain, taken()},
        CubeRow{"Empty", "TITLE\n" + kPlain, taken()},
        CubeRow{"GluedToQuote", "TITLE\"Warm\"\n" + kPlain, taken()},
        CubeRow{"HoldsKeyword", "TITLE LUT_1D_SIZE 4\n" + kPlain, taken()},
        CubeRow{"AfterData", kPlain + "TITLE \"Warm\"\n", taken()},
        CubeRow{"Latin1", "TITLE \"\xC9t\xE9\"\n" + kPlain, taken()},
        CubeRow{"Utf8", "TITLE \"\xC3\x89t\xC3\xA9 \xE6\x97\xA5\"\n" + kPlain, taken()},
        CubeRow{"TwoLines", "TITLE \"Warm\nLook\"\n" + kPlain, taken()},
        CubeRow{"TwoLinesInLowerCase", "TITLE \"warm\nlook\"\n" + kPlain, refused(kData, 0)},
        CubeRow{"LowerCase", "title \"Warm\"\n" + kPlain, refused(kData, 0)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    LineEnds, CubeText,
    ::testing::Values(
        CubeRow{"CrLf", ending("\r\n"), taken()}, CubeRow{"CrCrLf", ending("\r\r\n"), taken()},
        CubeRow{"LfCr", ending("\n\r"), taken()},
        CubeRow{"BlankLines", ending("\n\n \t\n"), taken()},
        CubeRow{"Mixed", kSize + replaced(kBody, "2 3\n", "2 3\r\n"), taken()},
        CubeRow{"LastOneMissing", kPlain.substr(0, kPlain.size() - 1), taken()},
        CubeRow{"ManyAtTheEnd", kPlain + std::string(1000, '\n'), taken()},
        CubeRow{"LoneCr", ending("\r"), refused(kCount)},
        CubeRow{"LoneCrAfterComment", "# Warm\r" + ending("\r"), refused(kNoSize, 0)},
        CubeRow{"LoneCrAfterTitle", "TITLE \"Warm\"\r" + ending("\r"), refused(kNoSize, 0)},
        CubeRow{"LoneCrInData", kSize + replaced(kBody, "\n", "\r"), refused(kCount)},
        CubeRow{"UnicodeLineSeparator", ending("\xE2\x80\xA8"), refused(kCount)},
        CubeRow{"FormFeedBetweenLines", kSize + kFirst + "\f\n" + kRest, refused(kCount)},
        CubeRow{"FormFeedAtTheEnd", kPlain + "\f\n", refused(kData)},
        CubeRow{"FormFeedBeforeComment", kSize + "\f# c\n" + kBody, refused(kData)},
        CubeRow{"VerticalTabBeforeKeyword", "\v" + kPlain, refused(kData, 0)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Blanks, CubeText,
    ::testing::Values(
        CubeRow{"Tabs", replaced(kPlain, " ", "\t"), taken()},
        CubeRow{"Several", replaced(kPlain, " ", "  \t "), taken()},
        CubeRow{"LeadingOnes", replaced("\n" + kPlain, "\n", "\n \t\r ").substr(1), taken()},
        CubeRow{"TrailingOnes", ending(" \t \n"), taken()},
        CubeRow{"FormFeeds", kSize + replaced(kBody, " ", "\f"), taken()},
        CubeRow{"VerticalTabLeads", kSize + "\v" + kBody, taken()},
        CubeRow{"HundredThousand", numbers("0" + std::string(100000, ' ') + "0.25 0.5"), taken()},
        CubeRow{"NoBreakSpaceLeads", numbers(kNoBreak + "0 0.25 0.5"), refused(kData)},
        CubeRow{"NoBreakSpaceBetween", numbers("0" + kNoBreak + "0.25 0.5"), refused(kData)},
        CubeRow{"NoBreakSpaceInLatin1", numbers("0" + kNoBreak.substr(1) + "0.25 0.5"),
                refused(kData)},
        CubeRow{"NoBreakSpaceTrails", numbers("0 0.25 0.5" + kNoBreak), taken()},
        CubeRow{"NoBreakSpaceLine", kPlain + kNoBreak + "\n", refused(kData)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Comments, CubeText,
    ::testing::Values(
        CubeRow{"BetweenLines", kSize + kFirst + "# b\n  #c\n#\n" + kRest, taken()},
        CubeRow{"BehindData", numbers("0 0.25 0.5 # black"), taken()},
        CubeRow{"GluedToData", numbers("0 0.25 0.5#black"), taken()},
        CubeRow{"BehindSize", "LUT_3D_SIZE 2 # points\n" + kBody, taken()},
        CubeRow{"HoldsKeyword", "# LUT_1D_SIZE 4\n#LUT_3D_SIZE 9\n" + kPlain, taken()},
        CubeRow{"OfAMillionBytes", "#" + std::string(1000000, 'x') + "\n" + kPlain, taken()},
        CubeRow{"BeforeThirdNumber", numbers("0 0.25 # 0.5"), refused(kData)},
        CubeRow{"Semicolon", "; Warm\n" + kPlain, refused(kData, 0)},
        CubeRow{"Slashes", "// Warm\n" + kPlain, refused(kData, 0)},
        CubeRow{"Dashes", kSize + "-- Warm\n" + kBody, refused(kData)},
        CubeRow{"Quote", kSize + "\"0 0 0\"\n" + kBody, refused(kData)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Numbers, CubeText,
    ::testing::Values(
        CubeRow{"Integers", numbers("0 255 1023"), taken({0, 255, 1023})},
        CubeRow{"Exponents", numbers("1.5e-07 1E-7 1e+2"), taken({1.5e-07f, 1e-7f, 100})},
        CubeRow{"PlusSigns", numbers("+1 +.5 +1.0e+0"), taken({1, 0.5f, 1})},
        CubeRow{"PointLeads", numbers(".5 -.25 .0"), taken({0.5f, -0.25f, 0})},
        CubeRow{"PointTrails", numbers("5. 0. -1."), taken({5, 0, -1})},
        CubeRow{"LeadingZeros", numbers("00.5 007 -00"), taken({0.5f, 7, -0.0f})},
        CubeRow{"Hexadecimal", numbers("0x1p-1 0x.8 0XA"), taken({0.5f, 0.5f, 10})},
        CubeRow{"Nan", numbers("nan -nan NaN"), taken({kNan, kNan, kNan})},
        CubeRow{"Inf", numbers("inf -inf Infinity"), taken({kInf, -kInf, kInf})},
        CubeRow{"NanWithDetails", numbers("nan(ind) -nan(snan) 1"), taken({kNan, kNan, 1})},
        CubeRow{"TooLarge", numbers("1e999 -1e39 1e-999"), taken({kInf, -kInf, 0})},
        CubeRow{"OfAHundredThousandDigits", numbers("0." + std::string(100000, '3') + " 0 0"),
                taken({1.0f / 3, 0, 0})},
        CubeRow{"FourInALine", numbers("0 0.25 0.5 1"), taken()},
        CubeRow{"CapitalsLead", kSize + "NAN 0 0\nINF 0 0\nINFINITY 1 1 1\n" + kBody, taken()},
        CubeRow{"CapitalInfInsteadOfData", numbers("INF 0 0"), refused(kCount)},
        CubeRow{"PoundInf", numbers("1.#INF 0 0"), refused(kData)},
        CubeRow{"PoundInfLast", numbers("0 0 1.#INF"), taken({0, 0, 1})},
        CubeRow{"DecimalCommas", numbers("0,0 0,25 0,5"), refused(kData)},
        CubeRow{"DecimalCommaLast", numbers("0 0 0,5"), taken({0, 0, 0})},
        CubeRow{"CommasBetween", numbers("0, 0.25, 0.5"), refused(kData)},
        CubeRow{"CommasWithoutBlanks", numbers("0,0.25,0.5"), refused(kData)},
        CubeRow{"SemicolonsBetween", numbers("0;0.25;0.5"), refused(kData)},
        CubeRow{"ExponentOfD", numbers("1.5D-07 0 0"), refused(kData)},
        CubeRow{"ExponentOfDLast", numbers("0 0 1.5D-07"), taken({0, 0, 1.5f})},
        CubeRow{"SuffixF", numbers("0.5f 0.5f 0.5f"), refused(kData)},
        CubeRow{"Percent", numbers("0% 25% 50%"), refused(kData)},
        CubeRow{"UnicodeMinus", numbers(kMinus + "0.5 0 0"), refused(kData)},
        CubeRow{"Brackets", numbers("[0 0.25 0.5]"), refused(kData)},
        CubeRow{"RowNumber", numbers("1: 0 0.25 0.5"), refused(kData)},
        CubeRow{"Words", numbers("red green blue"), refused(kData)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Lines, CubeText,
    ::testing::Values(CubeRow{"OneTooFew", kSize + kRest, refused(kCount)},
                      CubeRow{"OneTooMany", kPlain + "0 0 0\n", refused(kCount)},
                      CubeRow{"TwoColoursInOne", kSize + "0 0.25 0.5 1 2 3\n" + kRest.substr(6),
                              refused(kCount)},
                      CubeRow{"AllInOne", kSize + replaced(kBody, "\n", " "), refused(kCount)},
                      CubeRow{"OneNumberEach", kSize + replaced(kBody, " ", "\n"), refused(kData)},
                      CubeRow{"TwoNumbersInTheLast", kSize + kRest + "1 2\n", refused(kData)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Keywords, CubeText,
    ::testing::Values(
        CubeRow{"LowerCase", "lut_3d_size 2\n" + kBody, refused(kData, 0)},
        CubeRow{"LowerCaseDomain", kSize + "domain_min 0 0 0\n" + kBody, refused(kData)},
        CubeRow{"LowerCaseUnknown", kSize + "lut_in_video_range\n" + kBody, refused(kData)},
        CubeRow{"MixedCase", "Lut_3d_Size 2\n" + kBody, refused(kNoSize, 0)},
        CubeRow{"VideoRange", "LUT_IN_VIDEO_RANGE\nLUT_OUT_VIDEO_RANGE\n" + kPlain, taken()},
        CubeRow{"FullRange", kSize + "LUT_IN_FULL_RANGE\nLUT_OUT_FULL_RANGE\n" + kBody, taken()},
        CubeRow{"InputRange", kSize + "LUT_3D_INPUT_RANGE 0.0 4.0\n" + kBody, taken()},
        CubeRow{"InputRangeBesideTitleAndDomain",
                "TITLE \"x\"\nLUT_3D_INPUT_RANGE 0 4\nDOMAIN_MAX 1 1 1\n" + kPlain, taken()},
        CubeRow{"OneDInputRange", "LUT_1D_INPUT_RANGE 0.0 1.0\n" + kPlain, taken()},
        CubeRow{"OneDSize", "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n", refused(kOneD, 0)},
        CubeRow{"ShaperBeforeCube",
                "LUT_1D_SIZE 2\nLUT_1D_INPUT_RANGE 0 1\n" + kSize + "0 0 0\n1 1 1\n" + kBody,
                refused(kOneD, 0)},
        CubeRow{"ShaperSizeAfterCubeSize", kSize + "LUT_1D_SIZE 2\n0 0 0\n1 1 1\n" + kBody,
                refused(kOneD)},
        CubeRow{"Unknown", "X\nZEBRA 1 2 3\n_x 1 2 3\nA\n" + kPlain, taken()},
        CubeRow{"AlmostOneD", "LUT_1D_SIZ 4\n" + kPlain, taken()},
        CubeRow{"EndMarker", kPlain + "END\n", taken()}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Sizes, CubeText,
    ::testing::Values(CubeRow{"AfterData", kBody + "LUT_3D_SIZE 2", taken()},
                      CubeRow{"BetweenData", kFirst + kSize + kRest, taken()},
                      CubeRow{"Twice", "LUT_3D_SIZE 3\n" + kBody + "LUT_3D_SIZE 2\n", taken()},
                      CubeRow{"TwiceBeforeData", "LUT_3D_SIZE 256\nLUT_3D_SIZE 2\n" + kBody,
                              taken()},
                      CubeRow{"GluedToKeyword", "LUT_3D_SIZE2\n" + kBody, taken()},
                      CubeRow{"PlusSign", "LUT_3D_SIZE +2\n" + kBody, taken()},
                      CubeRow{"ThreeTimesInALine", "LUT_3D_SIZE 2 2 2\n" + kBody, taken()},
                      CubeRow{"WithCrosses", "LUT_3D_SIZE 2x2x2\n" + kBody, taken()},
                      CubeRow{"Point0", "LUT_3D_SIZE 33.0\n" + zeros(33), taken({}, 33)},
                      CubeRow{"Fraction", "LUT_3D_SIZE 2.9\n" + kBody, taken()},
                      CubeRow{"Padded", "LUT_3D_SIZE 0002\n" + kBody, taken()},
                      CubeRow{"Exponent", "LUT_3D_SIZE 2e1\n" + kBody, taken()},
                      CubeRow{"EqualsSign", "LUT_3D_SIZE=2\n" + kBody, refused(kRange, 0)},
                      CubeRow{"Colon", "LUT_3D_SIZE: 2\n" + kBody, refused(kRange, 0)},
                      CubeRow{"Quoted", "LUT_3D_SIZE \"2\"\n" + kBody, refused(kRange, 0)},
                      CubeRow{"Hexadecimal", "LUT_3D_SIZE 0x2\n" + kBody, refused(kRange, 0)},
                      CubeRow{"Word", "LUT_3D_SIZE two\n" + kBody, refused(kRange, 0)},
                      CubeRow{"OfHugeCube", "LUT_3D_SIZE 4096\n" + kBody, refused(kRange, 4096)},
                      CubeRow{"OfLattice", "LUT_3D_SIZE 8\n" + kBody, refused(kCount, 8)},
                      CubeRow{"AloneAtTheEnd", kBody + "LUT_3D_SIZE\n", refused(kRange, 0)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Domains, CubeText,
    ::testing::Values(
        CubeRow{"WrittenOut", "DOMAIN_MIN 0.0 0.0 0.0\nDOMAIN_MAX 1.0 1.0 1.0\n" + kPlain, taken()},
        CubeRow{"Exponents", "DOMAIN_MIN 0e+00 0E0 .0\nDOMAIN_MAX 1e0 10e-1 1.\n" + kPlain,
                taken()},
        CubeRow{"AfterData", kPlain + "DOMAIN_MAX 2 3 4\n",
                withDomain(taken(), {0, 0, 0}, {2, 3, 4})},
        CubeRow{"Twice", "DOMAIN_MAX 2 2 2\nDOMAIN_MAX 1 1 1\n" + kPlain, taken()},
        CubeRow{"OfBytes", "DOMAIN_MAX 255 255 255\n" + kPlain,
                withDomain(taken(), {0, 0, 0}, {255, 255, 255})},
        CubeRow{"FourNumbers", "DOMAIN_MAX 1 1 1 1\n" + kPlain, taken()},
        CubeRow{"OneNumber", "DOMAIN_MAX 1\nTITLE x\n" + kPlain,
                withDomain(refused(kDomain), {0, 0, 0}, {1, 0, 0})},
        CubeRow{"DecimalCommas", "DOMAIN_MAX 1,0 1,0 1,0\n" + kPlain,
                withDomain(refused(kDomain), {0, 0, 0}, {1, 0, 0})},
        CubeRow{"WithoutNumbers", "DOMAIN_MIN\nDOMAIN_MAX\nTITLE x\n" + kPlain,
                withDomain(refused(kDomain), {0, 0, 0}, {0, 0, 0})},
        CubeRow{"WithoutNumbersBeforeData", kSize + "DOMAIN_MIN\n" + kBody,
                withDomain(taken(), {0, 0.25f, 0.5f}, {1, 1, 1})}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Encodings, CubeText,
    ::testing::Values(
        CubeRow{"Utf8Bom", "\xEF\xBB\xBF" + kPlain, refused(kData, 0)},
        CubeRow{"Utf8BomBeforeTitle", "\xEF\xBB\xBFTITLE \"x\"\n" + kPlain, refused(kData, 0)},
        CubeRow{"Utf8BomBeforeComment", "\xEF\xBB\xBF# c\n" + kPlain, refused(kData, 0)},
        CubeRow{"Utf16LittleEndian", "\xFF\xFE" + wide(kPlain, true), refused(kData, 0)},
        CubeRow{"Utf16BigEndian", "\xFE\xFF" + wide(kPlain, false), refused(kData, 0)},
        CubeRow{"Utf16LittleEndianWithoutBom", wide(kPlain, true), refused(kData, 0)},
        CubeRow{"Utf16BigEndianWithoutBom", wide(kPlain, false), refused(kData, 0)},
        CubeRow{"Utf16CommentWithoutBom", bytes("#\0\n\0#\0", 6), refused(kData, 0)},
        CubeRow{"Latin1Comment", "# caf\xE9\n" + kPlain, taken()},
        CubeRow{"NulInSkippedLines", bytes("TITLE \0 LUT_1D_SIZE\n#\0\n", 23) + kPlain, taken()},
        CubeRow{"NulsBehindData", numbers("0 0.25 0.5" + bytes("\0\0 7", 4)), taken()},
        CubeRow{"NulInsideNumber", numbers(bytes("0.\0005 0 0", 8)), refused(kData)},
        CubeRow{"NulsAtTheEnd", kPlain + std::string(512, '\0'), refused(kData)},
        CubeRow{"NothingButNuls", std::string(65536, '\0'), refused(kData, 0)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    Tails, CubeText,
    ::testing::Values(CubeRow{"ControlZ", kPlain + "\x1A", refused(kData)},
                      CubeRow{"LowerCaseWords", kPlain + "end of file\n", refused(kData)},
                      CubeRow{"WordsWithACapital", kPlain + "Made on a rainy day\n", taken()},
                      CubeRow{"Dashes", kPlain + "---\n", refused(kData)},
                      CubeRow{"Markup", kPlain + "</pre></html>\n", refused(kData)},
                      CubeRow{"SameFileAgain", kPlain + kPlain, refused(kCount)}),
    RowName());

INSTANTIATE_TEST_SUITE_P(
    NoCubes, CubeText,
    ::testing::Values(CubeRow{"Mesh", "3DMESH\nMesh 4 12\n0 64 128\n", refused(kData, 0)},
                      CubeRow{"NumbersWithHeader", "LUTFILE 1.0\n3 3\n2 2 2\n0 0 0 0 0 0\n",
                              refused(kNoSize, 0)},
                      CubeRow{"Markup", "<?xml version=\"1.0\"?>\n<look/>\n", refused(kData, 0)},
                      CubeRow{"Json", "{\"size\": 2}\n", refused(kData, 0)},
                      CubeRow{"ColumnHeads", "r,g,b\n0,0,0\n", refused(kData, 0)},
                      CubeRow{"ColumnHeadsInCapitals", "R,G,B\n0,0,0\n", refused(kData, 0)},
                      CubeRow{"Executable", bytes("\177ELF\2\1\1\0\0", 9), refused(kData, 0)},
                      CubeRow{"Gzip", bytes("\x1F\x8B\x08\0", 4), refused(kData, 0)},
                      CubeRow{"Zip", bytes("PK\3\4\0\0LUT_3D_SIZE 2", 19), refused(kNoSize, 0)}),
    RowName());

}  // namespace
}  // namespace twtest
