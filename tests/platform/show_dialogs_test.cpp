// The program that shows both dialogs on a Mac, in GNUstep's windows.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "tests/platform/screen.h"

namespace {

class ShowDialogs : public twtest::ScreenTest {};

TEST_F(ShowDialogs, answersBoth_andKeepsTheirPictures) {
    const std::string folder = home() / "";
    const std::string command = "TINTWELL_PICTURES='" + folder + "' '" + SHOW_DIALOGS + "' >'" +
                                (home() / "told") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_EQ(twtest::readFile(home() / "told"),
              "open panel: shown and answered\nalert: shown and answered\n");
    for (const char* name : {"open-panel.png", "alert.png"})
        EXPECT_GT(std::filesystem::file_size(home() / name), 1000U) << name;
}

}  // namespace
