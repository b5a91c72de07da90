// A headless X server for each test.
#pragma once

#include <gtest/gtest.h>
#include <sys/types.h>

#include <string>

#include "tests/support/temp_folder.h"

namespace twtest {

// Starts a headless X server, points DISPLAY at it, and makes the test process an
// application, with a home of its own. Skips the test where no X server is installed. A test that
// takes longer than a minute is killed.
class ScreenTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    const TempHome& home() const { return home_; }
    // Writes a file into the home, the folders on the way included; returns its path.
    std::string write(const std::string& name, const std::string& contents) const;

private:
    TempHome home_;
    pid_t server_ = -1;
};

// Takes a picture of the whole screen, as a PNG file of that name in the test's output folder.
// Nothing without ImageMagick.
void takePicture(const std::string& name);

}  // namespace twtest
