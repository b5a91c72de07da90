#include "looks/text_finder.h"

#include <gtest/gtest.h>

#include <vector>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/luts.h"
#include "tests/support/random.h"

namespace {

using looks::FoundText;

std::vector<FoundText> find(const std::string& bytes, std::size_t piece = 1 << 20) {
    std::vector<FoundText> texts;
    looks::TextFinder finder([&texts](FoundText&& text) { texts.push_back(std::move(text)); });
    for (std::size_t at = 0; at < bytes.size(); at += piece)
        finder.take(bytes.data() + at, std::min(piece, bytes.size() - at));
    finder.end();
    return texts;
}

std::string wide(const std::string& text) {
    std::string bytes;
    for (const char character : text)
        bytes += {character, '\0'};
    return bytes;
}

std::string base64(const std::string& bytes) {
    return twtest::encodeBase64({bytes.begin(), bytes.end()});
}

std::string textOf(int size, std::uint64_t seed, const std::string& name = "Dusk") {
    return tw::toEmbeddedText(twtest::scatteredLut(size, seed), 42, name);
}

// The texts found, one a line, and where they stand.
std::string told(const std::string& bytes) {
    std::string lines;
    for (const FoundText& text : find(bytes))
        lines += text.text + " at " + std::to_string(text.offset) + "\n";
    return lines;
}

TEST(TextFinder, findsTextsOfBothWidths_amongAnything) {
    const std::string text = textOf(5, 1);
    const std::string bytes =
        std::string("TWL\0TW", 6) + text + std::string("\0\xFF", 2) + wide(text) + "tail";
    const std::vector<FoundText> texts = find(bytes);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].text, text);
    EXPECT_EQ(texts[0].offset, 6u);
    EXPECT_FALSE(texts[0].wide || texts[0].base64);
    EXPECT_EQ(texts[1].text, text);
    EXPECT_EQ(texts[1].offset, 8 + text.size());
    EXPECT_TRUE(texts[1].wide);
    EXPECT_FALSE(texts[1].base64);
}

TEST(TextFinder, findsTheSame_howeverTheStreamIsCut) {
    const std::string text = textOf(3, 2);
    const std::string bytes = "x" + text + "\n" + wide(text) + "<v>" + base64("ab" + wide(text));
    for (const std::size_t piece : {1u, 2u, 3u, 7u, 64u, 1000u}) {
        const std::vector<FoundText> texts = find(bytes, piece);
        ASSERT_EQ(texts.size(), 3u) << piece;
        for (const FoundText& found : texts)
            EXPECT_EQ(found.text, text) << piece;
    }
}

TEST(TextFinder, findsBase64_atEveryAlignment) {
    const std::string text = textOf(4, 3);
    for (const bool isWide : {false, true}) {
        for (std::size_t before = 0; before < 7; ++before) {
            const std::string run =
                base64(std::string(before, '\x01') + (isWide ? wide(text) : text) + "\x02\x03");
            const std::vector<FoundText> texts = find("<Value>" + run + "</Value>");
            ASSERT_EQ(texts.size(), 1u) << before;
            EXPECT_EQ(texts[0].text, text) << before;
            EXPECT_TRUE(texts[0].base64);
            EXPECT_EQ(texts[0].wide, isWide);
            EXPECT_EQ(texts[0].offset, 7 + before * 4 / 3) << before;
        }
    }
}

TEST(TextFinder, findsBase64_behindOtherLettersOfTheAlphabet) {
    const std::string text = textOf(2, 4);
    for (std::size_t before = 0; before < 5; ++before) {
        const std::vector<FoundText> texts = find(std::string(before, 'A') + base64(text));
        ASSERT_EQ(texts.size(), 1u) << before;
        EXPECT_EQ(texts[0].text, text) << before;
    }
}

TEST(TextFinder, findsBase64_brokenIntoLines) {
    const std::string text = textOf(4, 5);
    const std::string run = base64(wide(text));
    for (const std::size_t width : {1u, 4u, 5u, 76u}) {
        std::string lines;
        for (std::size_t at = 0; at < run.size(); at += width)
            lines += run.substr(at, width) + "\r\n\t";
        const std::vector<FoundText> texts = find(lines);
        ASSERT_EQ(texts.size(), 1u) << width;
        EXPECT_EQ(texts[0].text, text) << width;
    }
}

TEST(TextFinder, findsKeyframes_ofOneList) {
    const std::string run =
        "0," + base64(wide(textOf(2, 6))) + ";254016000000," + base64(wide(textOf(2, 7))) + ";";
    const std::vector<FoundText> texts = find(run);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[0].text, textOf(2, 6));
    EXPECT_EQ(texts[1].text, textOf(2, 7));
}

TEST(TextFinder, endsATextWithItsData) {
    const std::string text = textOf(2, 8);
    EXPECT_EQ(told(text + "tdb4ABCD"), text + " at 0\n");
    EXPECT_EQ(told(text + text),
              text + " at 0\n" + text + " at " + std::to_string(text.size()) + "\n");
    const std::string large = textOf(6, 9);
    EXPECT_EQ(told(large + "AAAA" + large).substr(0, large.size() + 6), large + " at 0\n");
    EXPECT_EQ(find(large + "AAAA" + large).size(), 2u);
}

TEST(TextFinder, findsManyShortTexts_inOneRun) {
    EXPECT_EQ(told("TWLUT0TWLUT0 TWLUTP 17TWLUT0"),
              "TWLUT0 at 0\nTWLUT0 at 6\nTWLUTP 17 at 13\nTWLUT0 at 22\n");
    EXPECT_EQ(find(wide("TWLUT0TWLUT0 TWLUTP 17TWLUT0")).size(), 4u);
    EXPECT_EQ(find(base64("TWLUT0TWLUT0 TWLUTP 17TWLUT0")).size(), 4u);
}

TEST(TextFinder, reportsWhatWasCutOff_andGoesOnBehindIt) {
    const std::string text = textOf(6, 10);
    const std::string cut = text.substr(0, 500);
    for (const std::string& between :
         {std::string(1, '\0'), std::string("</v>"), std::string("=\n")}) {
        const std::vector<FoundText> texts = find(cut + between + text);
        ASSERT_EQ(texts.size(), 2u) << between;
        EXPECT_EQ(texts[0].text, cut);
        EXPECT_EQ(texts[1].text, text);
    }
    EXPECT_EQ(told(cut), cut + " at 0\n");
}

TEST(TextFinder, seesTheNextText_withinDataThatLackSome) {
    const std::string text = textOf(6, 11);
    for (const std::size_t length : {40u, 90u, 96u, 97u, 500u}) {
        const std::string cut = text.substr(0, length);
        const std::vector<FoundText> texts = find(cut + text);
        ASSERT_EQ(texts.size(), 2u) << length;
        EXPECT_EQ(texts[0].text, cut);
        EXPECT_EQ(texts[1].text, text);
        EXPECT_EQ(texts[1].offset, length);
    }
}

TEST(TextFinder, countsTheBlanksThatItLeavesOut) {
    const std::string text = textOf(6, 11);
    const std::string cut = text.substr(0, 150) + "\n \n" + text.substr(150, 50);
    const std::vector<FoundText> texts = find(cut + text);
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_EQ(texts[1].offset, 203u);
    EXPECT_EQ(texts[1].text, text);
}

TEST(TextFinder, takesTheMarkWithinDataForData) {
    std::string text = textOf(6, 12);
    text.replace(200, 6, "TWLUT3");
    EXPECT_EQ(told(text), text + " at 0\n");
}

TEST(TextFinder, takesTheMarkForData_whereBlanksDivideIt) {
    std::string text = textOf(6, 12);
    text.replace(200, 6, "TWLUT3");
    std::string broken = text;
    broken.insert(206, " ");
    broken.insert(203, " ");
    EXPECT_EQ(told(broken), text + " at 0\n");
}

TEST(TextFinder, endsAWideText_withAUnitThatHoldsMoreThanAByte) {
    const std::string text = textOf(6, 12);
    const std::vector<FoundText> texts =
        find(wide(text.substr(0, 300)) + "A\x02" + wide(text.substr(300)));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0].text, text.substr(0, 300));
}

TEST(TextFinder, reportsWhatCannotBeRead) {
    EXPECT_EQ(told("TWLUT7 hello"), "TWLUT7 at 0\n");
    EXPECT_EQ(told("TWLUT3 nothing at all<"), "TWLUT3 nothing at all at 0\n");
    EXPECT_EQ(told("TWLUT1 130 0 1 AAAA"), "TWLUT1 130 0 1 AAAA at 0\n");
    EXPECT_EQ(told("TWLUT is a format, TWLUTS are many"), "");
}

TEST(TextFinder, findsATextBehindAHeadThatCannotBeRead) {
    const std::string text = textOf(2, 13);
    EXPECT_EQ(told("TWLUT3 5 " + text), "TWLUT3 5  at 0\n" + text + " at 9\n");
    EXPECT_EQ(told("TWLUTTWLUT" + text), text + " at 10\n");
}

TEST(TextFinder, endsATextThatWasTakenAlong_withTheSameByte) {
    EXPECT_EQ(told(std::string("TWLUT3 5 TWLUT3\0 2 0 1 ", 24) + std::string(64, 'A')),
              "TWLUT3 5  at 0\nTWLUT3 at 9\n");
}

TEST(TextFinder, findsATextThatEndsAnother_withinOnesThatCannotBeRead) {
    EXPECT_EQ(told("TWLUT3 5 TWLUTP 17TWLUT0<"), "TWLUT3 5  at 0\nTWLUTP 17 at 9\nTWLUT0 at 18\n");
    EXPECT_EQ(find(wide("TWLUT3 5 TWLUTP 17TWLUT0<")).size(), 3u);
}

TEST(TextFinder, takesNamesOf399Characters) {
    const std::string text = textOf(3, 14, std::string(399, 'n'));
    EXPECT_EQ(told("x" + text + "y"), text + " at 1\n");
    const std::string tooLong = textOf(3, 14, std::string(400, 'n'));
    EXPECT_EQ(find(tooLong).size(), 1u);
    EXPECT_EQ(find(wide(text)).at(0).text, text);
}

TEST(TextFinder, leavesBlanksInDataOut) {
    const std::string text = textOf(4, 15);
    EXPECT_EQ(told(text.substr(0, 300) + " \r\n" + text.substr(300)), text + " at 0\n");
}

TEST(TextFinder, holdsNoMoreThanATextNeeds_howeverManyBlanksItHas) {
    const std::vector<FoundText> texts =
        find("TWLUT1 2 0 1 " + std::string(100000, 'A').insert(30, 100000, ' '));
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_LT(texts[0].text.size(), 200u);
}

// No crash, and no text out of nothing, in a thousand texts of the letters that matter.
TEST(TextFinder, reportsOnlyWhatIsThere) {
    twtest::Random random(16);
    const std::string letters = std::string("TWLUT013P 9=<A\0", 15);
    for (int round = 0; round < 1000; ++round) {
        std::string bytes;
        for (int i = 0; i < 300; ++i)
            bytes += letters[static_cast<std::size_t>(random.next() % letters.size())];
        for (const FoundText& text : find(bytes)) {
            ASSERT_TRUE(text.text.starts_with("TWLUT")) << round;
            if (text.base64) continue;
            ASSERT_EQ(bytes.substr(static_cast<std::size_t>(text.offset), 5), "TWLUT") << round;
        }
    }
}

}  // namespace
