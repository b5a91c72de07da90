// .cube files as the LUT button takes them.
#include "effect/lut_file.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"
#include "tests/support/locales.h"
#include "tests/support/temp_folder.h"

namespace {

using tw::LutFile;
using tw::LutFileResult;

// Eight different points, as the lines of a file.
const std::string kLines =
    "0.1 0.2 0.3\n0.9 0.25 0.15\n0.05 0.8 0.4\n1 0.75 0\n"
    "0 0.125 1\n0.6 0.3 0.7\n0.2 0.95 0.85\n0.99 1 0.9\n";
const std::string kCube = "LUT_3D_SIZE 2\n" + kLines;

std::string textOf(const std::string& cube, long id, const std::string& name) {
    tw::Lut3D lut;
    std::string failure;
    EXPECT_TRUE(tw::parseCube(cube, lut, &failure)) << failure;
    return tw::toEmbeddedText(lut, id, name);
}

class PickedFile : public ::testing::Test {
protected:
    // Loads a file of this name and these bytes.
    LutFileResult load(const std::string& bytes, const std::string& name = "Film.cube") {
        twtest::writeFile(folder / name, bytes);
        return loadPath(folder / name);
    }

    LutFileResult loadPath(const std::string& path) {
        file = {};
        reason = "from before";
        return tw_effect::loadLutFile(tw::fromUtf8(path), file, reason);
    }

    const twtest::TempFolder folder;
    LutFile file;
    std::string reason;
};

TEST_F(PickedFile, becomesTextWithItsName_whenItIsACube) {
    EXPECT_EQ(load(kCube, "My LUT.final.cube"), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 0, "My LUT.final"));
    EXPECT_EQ(file.text.substr(0, 30), "TWLUT3 0 My%20LUT.final 2 0 1 ");
    EXPECT_EQ(file.size, 2);
    EXPECT_EQ(reason, "");
}

TEST_F(PickedFile, carriesItsMatchId_whereverTheCommentStands) {
    EXPECT_EQ(load(kCube + "# Tintwell match 42\n"), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 42, "Film"));
    EXPECT_EQ(load("# Tintwell match x\n" + kCube), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 0, "Film"));
}

TEST_F(PickedFile, keepsItsNameInUtf8_whateverThePath) {
    EXPECT_EQ(load(kCube, "Abendr\u00F6te.cube"), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 0, "Abendr\u00F6te"));
    EXPECT_EQ(load(kCube, ".cube"), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 0, ""));
}

TEST_F(PickedFile, readsTheSame_whenLinesEndInCarriageReturns) {
    std::string cube;
    for (const char c : kCube)
        cube += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(load(cube), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, textOf(kCube, 0, "Film"));
}

TEST_F(PickedFile, readsTheSame_whenTheLocaleHasAComma) {
    const std::string expected = textOf(kCube, 0, "Film");
    const twtest::CommaLocale comma;
    if (!comma.usable()) GTEST_SKIP() << "no locale with a decimal comma";
    EXPECT_EQ(load(kCube), LutFileResult::kLoaded);
    EXPECT_EQ(file.text, expected);
}

TEST_F(PickedFile, isTaken_whenItsDomainIsZeroToOne) {
    for (const char* domain : {"DOMAIN_MIN 0 0 0\nDOMAIN_MAX 1 1 1\n", "DOMAIN_MAX 1.0 1e0 1\n",
                               "DOMAIN_MIN -0 0.0 0\n", "DOMAIN_MIN\n"}) {
        EXPECT_EQ(load(domain + kCube), LutFileResult::kLoaded) << domain;
        EXPECT_EQ(file.text, textOf(kCube, 0, "Film")) << domain;
    }
}

TEST_F(PickedFile, isForeign_whenAnyBoundIsAnother) {
    for (const char* domain :
         {"DOMAIN_MAX 1 1 1.0001\n", "DOMAIN_MAX 1 0.5 1\n", "DOMAIN_MAX 2 1 1\n",
          "DOMAIN_MIN 0 0 0.0001\n", "DOMAIN_MIN 0 -1 0\n", "DOMAIN_MIN 0.5 0 0\n",
          "DOMAIN_MAX inf 1 1\n", "DOMAIN_MIN 0 0 -1e-30\n"}) {
        EXPECT_EQ(load(domain + kCube), LutFileResult::kForeignDomain) << domain;
        EXPECT_EQ(reason, "") << domain;
    }
}

struct Unreadable {
    std::string cube;
    const char* reason;
};

TEST_F(PickedFile, isUnreadableWithTheParsersReason_whenItIsNoCube) {
    const std::vector<Unreadable> rows = {
        {"LUT_3D_SIZE 1\n" + kLines, "LUT_3D_SIZE out of range"},
        {"LUT_3D_SIZE 257\n" + kLines, "LUT_3D_SIZE out of range"},
        {"LUT_1D_SIZE 16\n" + kLines, "1D LUTs are not supported"},
        {"LUT_3D_SIZE 2\nred green blue\n", "malformed data line"},
        {"# nothing but a comment\n", "no LUT_3D_SIZE"},
        {kCube + "0 0 0\n", "wrong number of values"},
        {"DOMAIN_MAX 1 0 1\n" + kCube, "bad DOMAIN_MIN/MAX"},
        {std::string(100, '\0'), "malformed data line"}};
    for (const Unreadable& row : rows) {
        EXPECT_EQ(load(row.cube), LutFileResult::kUnreadable) << row.reason;
        EXPECT_EQ(reason, row.reason);
    }
}

TEST_F(PickedFile, isUnreadableWithoutReason_whenThereIsNothingToRead) {
    EXPECT_EQ(load(""), LutFileResult::kUnreadable);
    EXPECT_EQ(reason, "");
    EXPECT_EQ(loadPath(folder / "missing.cube"), LutFileResult::kUnreadable);
    EXPECT_EQ(reason, "");
    EXPECT_EQ(loadPath(""), LutFileResult::kUnreadable);
    EXPECT_EQ(reason, "");
}

TEST_F(PickedFile, isUnreadableWithoutReason_whenItIsAFolder) {
    std::filesystem::create_directory(folder / "Folder.cube");
    EXPECT_EQ(loadPath(folder / "Folder.cube"), LutFileResult::kUnreadable);
    EXPECT_EQ(reason, "");
}

// A cube of exactly `size` bytes, its points at the end.
std::string cubeOfBytes(std::size_t size) {
    const std::string head = "LUT_3D_SIZE 2\n#";
    return head + std::string(size - head.size() - 1 - kLines.size(), '.') + "\n" + kLines;
}

// Every byte of the points comes to lie on either side of the end of the first buffer.
TEST_F(PickedFile, isReadWhole_whenItIsLongerThanOneBuffer) {
    const std::string expected = textOf(kCube, 0, "Film");
    for (std::size_t size = 65535; size <= 65536 + kLines.size() + 2; ++size) {
        const std::string cube = cubeOfBytes(size);
        ASSERT_EQ(cube.size(), size);
        EXPECT_EQ(load(cube), LutFileResult::kLoaded) << size;
        EXPECT_EQ(file.text, expected) << size;
    }
    for (const std::size_t size : {131071U, 131072U, 131073U, 1000000U}) {
        EXPECT_EQ(load(cubeOfBytes(size)), LutFileResult::kLoaded) << size;
        EXPECT_EQ(file.text, expected) << size;
    }
}

TEST_F(PickedFile, findsTheMatchId_acrossTheEndOfABuffer) {
    const std::string comment = "# Tintwell match 123456\n";
    for (std::size_t before = 65536 - comment.size(); before <= 65537; ++before) {
        EXPECT_EQ(load(cubeOfBytes(before) + comment), LutFileResult::kLoaded) << before;
        EXPECT_EQ(file.text, textOf(kCube, 123456, "Film")) << before;
    }
}

// The two limits differ on purpose: files may be finer than what a parameter can hold.
TEST_F(PickedFile, isLoaded_whenItIsLargerThanStoredLutsCanBe) {
    std::string cube = "LUT_3D_SIZE 130\n";
    for (int i = 0; i < 130 * 130 * 130; ++i)
        cube += "0 0 1\n";
    EXPECT_EQ(load(cube), LutFileResult::kLoaded);
    EXPECT_EQ(file.size, 130);
    tw::Lut3D lut;
    std::string failure;
    EXPECT_FALSE(tw::parseEmbeddedText(file.text, lut, &failure));
    EXPECT_EQ(failure, "LUT size out of range");
}

}  // namespace
