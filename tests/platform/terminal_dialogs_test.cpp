// The terminal dialogs, on a pseudo-terminal.
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/mac/dialogs.h"
#include "tests/support/temp_folder.h"

namespace {

namespace fs = std::filesystem;

class Terminal : public testing::Test {
protected:
    void SetUp() override {
        fs::create_directory(folder_ + "/sub");
        twtest::writeFile(folder_ + "/été \"x\".cube", "LUT_3D_SIZE 2\n");
    }

    // Runs `dialog` in a process whose terminal gets the keys once it has shown `prompt`, and
    // returns all that it shows, with what `dialog` returned in brackets at its end.
    static std::string typed(const std::string& prompt, const std::string& keys,
                             const std::function<std::string()>& dialog) {
        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            const std::string result = "[" + dialog() + "]";
            const bool shown = write(STDOUT_FILENO, result.data(), result.size()) > 0;
            _exit(shown ? 0 : 1);
        }
        std::string shown;
        char c;
        while (read(terminal, &c, 1) == 1) {
            shown.push_back(c);
            if (!shown.ends_with(prompt)) continue;
            EXPECT_EQ(shown.find('['), std::string::npos) << "returned before an answer";
            EXPECT_GT(write(terminal, keys.data(), keys.size()), 0);
        }
        close(terminal);
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        return shown;
    }

    static std::string chosen(const std::string& shown) {
        const std::size_t start = shown.rfind('[');
        return shown.substr(start + 1, shown.rfind(']') - start - 1);
    }

    std::string pick(const std::string& keys) const {
        return typed("Tintwell: choose a LUT\r\n", keys,
                     [this] { return tw_mac::PickCube(folder_); });
    }

    const twtest::TempFolder temp_;
    const std::string folder_ = temp_.path();
};

TEST_F(Terminal, pickCubeTakesAnExistingFile) {
    const std::string path = folder_ + "/été \"x\".cube";
    EXPECT_EQ(chosen(pick(path + "\n")), path);
}

TEST_F(Terminal, pickCubeTakesANameInTheFolder) {
    EXPECT_EQ(chosen(pick("été \"x\".cube\n")), folder_ + "/été \"x\".cube");
}

TEST_F(Terminal, pickCubeAsksAgain_untilTheFileExists) {
    const std::string shown = pick("missing.cube\nsub\nété \"x\".cube\n");
    EXPECT_NE(shown.find("No such file: " + folder_ + "/missing.cube"), std::string::npos) << shown;
    EXPECT_NE(shown.find("No such file: " + folder_ + "/sub"), std::string::npos) << shown;
    EXPECT_EQ(chosen(shown), folder_ + "/été \"x\".cube");
}

TEST_F(Terminal, pickCubeIsCancelled_withAnEmptyLine) {
    EXPECT_EQ(chosen(pick("\n")), "");
}

TEST_F(Terminal, pickCubeIsCancelled_atTheEndOfTheInput) {
    EXPECT_EQ(chosen(pick("\x04")), "");
}

TEST_F(Terminal, alertWaitsForReturn) {
    const std::string shown = typed("Press Return: ", "\n", [] {
        tw_mac::Alert("Could not read\nthis one", true);
        return std::string("closed");
    });
    EXPECT_NE(shown.find("Could not read\r\nthis one"), std::string::npos) << shown;
    EXPECT_EQ(chosen(shown), "closed");
}

// In a session of its own a process has no terminal.
TEST_F(Terminal, picksNothingAndAlertsReturn_withoutATerminal) {
    const pid_t child = fork();
    if (child == 0) {
        setsid();
        tw_mac::Alert("not shown", false);
        _exit(tw_mac::PickCube("/").empty() ? 0 : 1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
}

}  // namespace
