// Runs tintwell-host as its user does, in a folder of the test's own.
#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/temp_folder.h"
#include "tintwell_host/files/picture.h"

namespace program_test {

// For the shell: the first file that is written cannot grow.
inline constexpr char kFullDisk[] = "ln -s /dev/full .partial-$(uname -n)-$$-0; exec";

struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

class Program : public testing::Test {
protected:
    // Runs the program in the folder, which is also its home, after the shell commands `before`.
    Outcome run(const std::string& arguments, const std::string& before = "") {
        const std::string command = "cd '" + folder_.path() + "' && export HOME='" +
                                    folder_.path() + "' XDG_STATE_HOME= && { " + before + " '" +
                                    TINTWELL_HOST + "' " + arguments + "; } >'" + out_ + "' 2>'" +
                                    err_ + "'";
        const int status = std::system(command.c_str());
        return {WEXITSTATUS(status), twtest::readFile(out_), twtest::readFile(err_)};
    }

    // The same, which must go well.
    std::string runWell(const std::string& arguments, const std::string& before = "") {
        const Outcome outcome = run(arguments, before);
        EXPECT_EQ(outcome.exitCode, 0) << arguments << "\n" << outcome.err;
        return outcome.out;
    }

    // The same, which must end with `exitCode` and just this sentence.
    void runWrong(const std::string& arguments, const std::string& sentence,
                  const std::string& before = "", int exitCode = 1) {
        const Outcome outcome = run(arguments, before);
        EXPECT_EQ(outcome.exitCode, exitCode) << arguments;
        EXPECT_EQ(outcome.err, "tintwell-host: " + sentence + "\n") << arguments;
    }

    std::string file(const std::string& name) const { return folder_ / name; }
    bool exists(const std::string& name) const { return std::filesystem::exists(file(name)); }

    // Names in the folder, hidden ones included, less the home's.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_.path())) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    // A PNG of 8 bits with a colour of its own in each pixel.
    void writeInput(const std::string& name, int width = 7, int height = 5) const {
        program::Picture picture;
        picture.width = width;
        picture.height = height;
        for (int i = 0; i < width * height; ++i) {
            const auto value = static_cast<std::uint8_t>(i * 7 % 256);
            picture.bytes.insert(picture.bytes.end(),
                                 {value, static_cast<std::uint8_t>(255 - value), 40, 255});
        }
        program::writePicture(file(name), picture);
    }

    // A 2-point LUT that turns every colour into its negative.
    void writeNegative(const std::string& name) const {
        twtest::writeFile(
            file(name), "LUT_3D_SIZE 2\n1 1 1\n0 1 1\n1 0 1\n0 0 1\n1 1 0\n0 1 0\n1 0 0\n0 0 0\n");
    }

    std::vector<std::uint8_t> bytes(const std::string& name) const {
        return program::readPicture(file(name), program::Depth::k8).bytes;
    }
    std::vector<float> floats(const std::string& name) const {
        return program::readPicture(file(name), program::Depth::kFloat).floats;
    }

    // `in` with every colour as its negative.
    static std::vector<std::uint8_t> negative(std::vector<std::uint8_t> in) {
        for (std::size_t i = 0; i < in.size(); ++i) {
            if (i % 4 != 3) in[i] = static_cast<std::uint8_t>(255 - in[i]);
        }
        return in;
    }

    twtest::TempFolder folder_;

private:
    twtest::TempFolder outputs_;
    std::string out_ = outputs_ / "out";
    std::string err_ = outputs_ / "err";
};

}  // namespace program_test
