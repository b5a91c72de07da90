// .cube files with unusual names.
#include <climits>
#include <filesystem>

#include "native/src/paths.h"
#include "tests/effect/lut_button_fixture.h"

namespace {

namespace fs = std::filesystem;
using twtest::Alerts;
using twtest::cube;
using twtest::kLut;
using twtest::widened;

class FileName : public twtest::LutButton {
protected:
    bool logHolds(const std::string& line) const {
        return twtest::readFile(home.dataFile("effect.log")).find("  " + line) != std::string::npos;
    }

    // Refused: the parameter is as before, the log and an alert name the file as `spelled`.
    void expectRefused(const std::string& file, const std::string& spelled) {
        const twtest::Bytes before = lutBytes();
        dialogs().alerts.clear();
        const auto result = pickFile(file);
        EXPECT_EQ(result.error, PF_Err_NONE);
        EXPECT_EQ(result.changed, std::vector<int>());
        EXPECT_EQ(lutBytes(), before);
        const std::string line = "LUT button: could not read " + spelled + ": ";
        EXPECT_TRUE(logHolds(line.substr(0, 1023) + (line.size() < 1023 ? "" : "\n")));
        EXPECT_EQ(dialogs().alerts,
                  (Alerts{{"Tintwell could not read this LUT:\n" + spelled, true}}));
        dialogs().alerts.clear();
    }

    // A path of `length` bytes to a folder in the home, made with the folders on the way.
    std::string deepFolder(std::size_t length) const {
        std::string folder = path("d");
        while (folder.size() + 2 <= length) {
            const std::size_t left = length - folder.size() - 1;
            folder += "/" + std::string(std::min<std::size_t>(left, 200), 'd');
        }
        fs::create_directories(folder);
        return folder;
    }
};

TEST_F(FileName, mayHoldEveryByteOfAscii) {
    for (int byte = 1; byte < 128; ++byte) {
        if (byte == '/') continue;
        SCOPED_TRACE(byte);
        const std::string file = std::string("n") + static_cast<char>(byte) + "m.cube";
        const std::string name = byte == '\\' ? "m" : file.substr(0, 3);
        expectLoaded(file, cube(2), 0, name);
        EXPECT_EQ(label(), name + ".cube");
        EXPECT_TRUE(logHolds("LUT button: loaded " + path(file) + " (2^3, "));
    }
}

// A lone byte above ASCII is not UTF-8, which no Mac dialog returns: the conversion changes the
// path, and there is no such file.
TEST_F(FileName, mayNotHoldALoneByteAboveAscii) {
    for (int byte = 128; byte < 256; ++byte) {
        SCOPED_TRACE(byte);
        const std::string file =
            write(std::string("n") + static_cast<char>(byte) + "m.cube", cube(2));
        const std::string spelled = tw::toUtf8(tw::fromUtf8(file));
        ASSERT_NE(spelled, file);
        expectRefused(file, spelled);
    }
}

TEST_F(FileName, mayHoldCodePointsOfEveryLength) {
    for (const std::string name :
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xEF\xBB\xBF", "\xEF\xBF\xBF", "\xED\xA0\x80",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF", "e\xCC\x81",
          "\xE2\x80\xAE"
          "abc"}) {
        SCOPED_TRACE(testing::PrintToString(name));
        expectLoaded(name + ".cube", cube(2), 0, name);
        EXPECT_EQ(label(), name + ".cube");
    }
}

TEST_F(FileName, losesItsExtension_whateverItsCase) {
    for (const std::string extension : {".CUBE", ".Cube", ".cube ", ".txt", "."}) {
        expectLoaded("WARM" + extension, cube(2), 0, "WARM");
        EXPECT_EQ(label(), "WARM.cube") << extension;
    }
}

TEST_F(FileName, mayHave255Bytes) {
    const std::string name(250, 'n');
    expectLoaded(name + ".cube", cube(2), 0, name);
    EXPECT_EQ(label(), name + ".cube");
}

// An encoded name of more than 399 characters is stored and cannot be read back. 45 letters of
// three bytes each are enough for that.
TEST_F(FileName, makesTheLookUnusable_whenTooLongEncoded) {
    for (const std::size_t letters : {44u, 45u, 83u}) {
        std::string name;
        for (std::size_t i = 0; i < letters; ++i)
            name += "映";
        expectLoaded(name + ".cube", cube(2), 0, name);
        EXPECT_EQ(label(), letters * 9 <= 399 ? name + ".cube" : "Choose a LUT") << letters;
    }
}

TEST_F(FileName, mayStandAtTheEndOfTheLongestPath) {
    const std::string folder = deepFolder(PATH_MAX - 1 - std::string("/x.cube").size());
    const std::string file = folder + "/x.cube";
    ASSERT_EQ(file.size(), PATH_MAX - 1u);
    twtest::writeFile(file, cube(2));
    EXPECT_EQ(pickFile(file).changed, std::vector<int>{kLut});
    EXPECT_EQ(lutBytes(), expectedBytes(cube(2), 0, "x"));
    EXPECT_TRUE(logHolds(("LUT button: loaded " + file).substr(0, 1023) + "\n"));
}

TEST_F(FileName, isRefused_whenLongerThanTheSystemTakes) {
    std::string dots = path("");
    while (dots.size() < PATH_MAX)
        dots += "./";
    write("x.cube", cube(2));
    for (const std::string& file : {dots + "x.cube", path(std::string(256, 'x') + ".cube"),
                                    "/" + std::string(100000, 'x'), std::string(5000, '/')}) {
        SCOPED_TRACE(file.substr(0, 100));
        expectRefused(file, file);
    }
}

}  // namespace
