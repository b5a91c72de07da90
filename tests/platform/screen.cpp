#include "tests/platform/screen.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/mac/application.h"

// Read by LeakSanitizer where it is linked in: the window libraries keep what they allocate.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libobjc\nleak:libgnustep\nleak:libfontconfig\n";
}

namespace twtest {
namespace {

namespace fs = std::filesystem;

// Becomes the X server, which tells the number of its display through `pipeEnd`. It ends with this
// process.
[[noreturn]] void becomeServer(int pipeEnd) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    const std::string number = std::to_string(pipeEnd);
    execlp("Xvfb", "Xvfb", "-displayfd", number.c_str(), "-screen", "0", "1024x768x24", "-nolisten",
           "tcp", nullptr);
    _exit(127);
}

// The server's process, and in `display` its display; that stays empty without a server.
pid_t startServer(std::string& display) {
    int ends[2];
    if (pipe(ends) != 0) return -1;
    const pid_t server = fork();
    if (server == 0) becomeServer(ends[1]);
    close(ends[1]);
    char c;
    while (read(ends[0], &c, 1) == 1 && c != '\n') {
        if (display.empty()) display.push_back(':');
        display.push_back(c);
    }
    close(ends[0]);
    return server;
}

}  // namespace

void ScreenTest::SetUp() {
    alarm(60);
    unsetenv("XAUTHORITY");

    std::string display;
    server_ = startServer(display);
    if (display.empty()) GTEST_SKIP() << "no X server: scripts/install-packages dialog-tests";
    setenv("DISPLAY", display.c_str(), 1);
    ASSERT_TRUE(tw_mac::BecomeApplication());
}

void ScreenTest::TearDown() {
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }
}

std::string ScreenTest::write(const std::string& name, const std::string& contents) const {
    const std::string path = home_ / name;
    fs::create_directories(fs::path(path).parent_path());
    writeFile(path, contents);
    return path;
}

void takePicture(const std::string& name) {
    fs::create_directories(TINTWELL_PICTURES);
    const std::string command =
        "import -window root '" TINTWELL_PICTURES "/" + name + ".png' 2>/dev/null";
    if (std::system(command.c_str()) != 0) std::puts("no picture: ImageMagick's import failed");
}

}  // namespace twtest
