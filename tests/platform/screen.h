// A screen of a test's own, and a home that is thrown away.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>

namespace tw_test {

// Starts an X server without a screen, points DISPLAY at it and HOME at an empty folder, and makes
// the test process an application. Skips the test where no X server is installed. A test that takes
// longer than a minute is killed.
class ScreenTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // Folder of the test, HOME being a folder in it.
    const std::string& folder() const { return folder_; }
    // Writes a file into the folder, the folders on the way included; returns its path.
    std::string write(const std::string& name, const std::string& contents) const;

private:
    std::string folder_;
    pid_t server_ = -1;
};

// Takes a picture of the whole screen, as a PNG file of that name in the test's output folder.
// Nothing without ImageMagick.
void takePicture(const std::string& name);

}  // namespace tw_test
