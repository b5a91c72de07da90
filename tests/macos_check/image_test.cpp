#include "macos_check/loader/image.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

// The error of mapping a file of these contents; empty when it is mapped.
std::string complaint(const std::string& contents) {
    const twtest::TempHome home;
    const std::string file = home / "file";
    if (!contents.empty()) twtest::writeFile(file, contents);
    try {
        const macho::Image image(
            file, [](std::string_view) { return nullptr; }, [](const macho::Byte*) {});
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "";
}

// A universal file of one slice.
std::string universal(const std::string& processor, char fileType) {
    std::string file("\xCA\xFE\xBA\xBE\0\0\0\1", 8);
    file += processor + std::string("\0\0\0\3\0\0\x10\0\0\0\x10\0\0\0\0\x0C", 16);
    file.resize(8192);
    file[4096 + 12] = fileType;
    return file;
}

const std::string kX86("\1\0\0\7", 4);
const std::string kArm("\1\0\0\x0C", 4);

TEST(Image, refuses_whatIsNoBundleForThisProcessor) {
    EXPECT_EQ(complaint(""), "cannot be read");
    EXPECT_EQ(complaint("short"), "is no universal file");
    EXPECT_EQ(complaint(std::string(8192, '\0')), "is no universal file");
    EXPECT_EQ(complaint(universal(kArm, 8)), "holds no bundle for x86-64");
    EXPECT_EQ(complaint(universal(kX86, 6)), "holds no bundle for x86-64");
}

}  // namespace
