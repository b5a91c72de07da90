// A job that is asked to stop, and one that is killed.
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <random>
#include <thread>

#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

constexpr int kFrames = 12;

class Signals : public Program {
protected:
    void SetUp() override {
        writeNegative("negative.cube");
        writeInput("s.0001.png", 160, 90);
        for (int frame = 2; frame <= kFrames; ++frame)
            std::filesystem::copy_file(file("s.0001.png"), file(nameOf("s", frame)));
    }

    static std::string nameOf(const std::string& sequence, int frame) {
        return sequence + (frame < 10 ? ".000" : ".00") + std::to_string(frame) + ".png";
    }

    // Begins a job; what it prints on standard output can be read from `output_`.
    pid_t begin(const std::string& out) {
        int ends[2];
        EXPECT_EQ(pipe2(ends, O_CLOEXEC), 0);
        const pid_t child = fork();
        if (child == 0) {
            dup2(ends[1], 1);
            if (chdir(folder_.path().c_str()) != 0) _exit(99);
            setenv("HOME", folder_.path().c_str(), 1);
            execl(TINTWELL_HOST, TINTWELL_HOST, "render", "s.%04d.png", out.c_str(), "--lut",
                  "negative.cube", "--skip-existing", "--progress", "lines", "--threads", "2",
                  "--report", "job.json", nullptr);
            _exit(98);
        }
        close(ends[1]);
        output_ = ends[0];
        return child;
    }

    void waitForALine() const {
        char c = 0;
        while (read(output_, &c, 1) == 1 && c != '\n') {
        }
    }

    int end(pid_t child) const {
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        close(output_);
        return status;
    }

    void expectPolite(int signal, int exitCode) {
        const pid_t child = begin("o.%04d.png");
        waitForALine();
        kill(child, signal);
        expectStopped(end(child), exitCode);
    }

    void expectStopped(int status, int exitCode) {
        ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
        const bool wasDone = exists(nameOf("o", kFrames));
        EXPECT_EQ(WEXITSTATUS(status), wasDone ? 0 : exitCode);
        EXPECT_EQ(partials(), 0);
        EXPECT_TRUE(exists("job.json"));
        expectSame("o.%04d.png");
    }

    int partials() const {
        int count = 0;
        for (const std::string& each : files())
            count += each.starts_with(".partial-") ? 1 : 0;
        return count;
    }

    // Every file that is there is whole, and the restarted job ends with those of an undisturbed
    // one.
    void expectSame(const std::string& out) {
        if (!exists("good.0001.png")) {
            runWell("render s.%04d.png good.%04d.png --lut negative.cube");
        }
        const std::string good = twtest::readFile(file("good.0001.png"));
        for (int frame = 1; frame <= kFrames; ++frame) {
            if (!exists(nameOf("o", frame))) continue;
            EXPECT_TRUE(twtest::readFile(file(nameOf("o", frame))) == good) << frame;
        }
        runWell("render s.%04d.png " + out + " --lut negative.cube --skip-existing");
        for (int frame = 1; frame <= kFrames; ++frame) {
            EXPECT_TRUE(twtest::readFile(file(nameOf("o", frame))) == good) << frame;
        }
        EXPECT_EQ(partials(), 0);
    }

    int output_ = -1;
};

// `timeout` sends it to the program and then to the program's group: until its end it may come.
TEST_F(Signals, sigtermMayComeAgain) {
    const pid_t child = begin("o.%04d.png");
    waitForALine();
    siginfo_t ended = {};
    while (ended.si_pid == 0) {
        kill(child, SIGTERM);
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        ASSERT_EQ(waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT), 0);
    }
    expectStopped(end(child), 143);
}

TEST_F(Signals, sigtermFinishesWhatWasBegun_andEndsWith143) {
    expectPolite(SIGTERM, 143);
}

TEST_F(Signals, sigintFinishesWhatWasBegun_andEndsWith130) {
    expectPolite(SIGINT, 130);
}

int numberIn(const char* variable, int otherwise) {
    const char* text = std::getenv(variable);
    return text != nullptr ? std::atoi(text) : otherwise;
}

// TINTWELL_KILLS says how often; each time at another moment of the job, by TINTWELL_KILLS_SEED.
TEST_F(Signals, sigkillLeavesNoPartOfAFile_andTheRestartGivesTheSameBytes) {
    const int kills = numberIn("TINTWELL_KILLS", 2);
    std::mt19937 random(static_cast<unsigned>(numberIn("TINTWELL_KILLS_SEED", 0)));
    int cut = 0;
    for (int i = 0; i < kills; ++i) {
        SCOPED_TRACE(i);
        for (int frame = 1; frame <= kFrames; ++frame)
            std::filesystem::remove(file(nameOf("o", frame)));
        const pid_t child = begin("o.%04d.png");
        if (i % 4 != 0) waitForALine();
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 30000));
        kill(child, SIGKILL);
        cut += WIFSIGNALED(end(child)) ? 1 : 0;
        expectSame("o.%04d.png");
    }
    EXPECT_GT(cut, 0) << "every job had ended before it was killed";
}

}  // namespace
}  // namespace program_test
