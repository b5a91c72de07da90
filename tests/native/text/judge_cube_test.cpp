// The name and the match that a .cube file brings along.
#include "native/src/judge_cube.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "native/src/paths.h"

namespace {

const std::string kCube = "LUT_3D_SIZE 2\n0 0 0\n";

struct Name {
    const wchar_t* path;
    const wchar_t* name;
};

TEST(LutName, isTheFileNameWithoutFolderAndLastExtension) {
    const std::vector<Name> rows = {
        {L"/a/b/Warm.v2.cube", L"Warm.v2"},
        {L"/x/My LUT.final.cube", L"My LUT.final"},
        {L"/a/.cube", L""},
        {L"/a/README", L"README"},
        {L"Film.cube", L"Film"},
        {L"Film", L"Film"},
        {L"", L""},
        {L"/a/b.c/Film", L"Film"},
        {L"/a/Film.", L"Film"},
        {L"/a/..", L"."},
        {L"/a/b/", L""},
        {L"C:\\Looks.d\\Film.cube", L"Film"},
        {L"/a/b\\Film.cube", L"Film"},
        {L"a\\b/Film.cube", L"Film"},
        {L"/a/Abendr\u00F6te \U0001F39E.cube", L"Abendr\u00F6te \U0001F39E"}};
    for (const Name& row : rows)
        EXPECT_EQ(tw::lutNameOf(row.path), row.name) << tw::toUtf8(row.path);
}

struct MatchId {
    std::string text;
    long id;
};

TEST(MatchId, isTheNumberAfterTheFirstMatchComment) {
    const std::vector<MatchId> rows = {
        {"", 0},
        {kCube, 0},
        {"# Tintwell match 42\n" + kCube, 42},
        {kCube + "# Tintwell match 42", 42},
        {"TITLE \"x # Tintwell match 7 y\"\n", 7},
        {"# Tintwell match 1\n# Tintwell match 2\n", 1},
        {"# Tintwell match x\n# Tintwell match 2\n", 0},
        {"# Tintwell match ", 0},
        {"# Tintwell match", 0},
        {"#Tintwell match 42", 0},
        {"# tintwell match 42", 0},
        {"# Tintwell  match 42", 0},
        {"# Tintwell match \t\n 42", 42},
        {"# Tintwell match -17", -17},
        {"# Tintwell match +5", 5},
        {"# Tintwell match - 5", 0},
        {"# Tintwell match 42abc", 42},
        {"# Tintwell match 0x10", 0},
        {"# Tintwell match 9223372036854775807", 9223372036854775807L},
        {std::string("a\0b # Tintwell match 9", 22), 9}};
    for (const MatchId& row : rows)
        EXPECT_EQ(tw::matchIdOf(row.text), row.id) << row.text;
}

}  // namespace
