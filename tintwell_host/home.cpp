#include "tintwell_host/home.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "native/src/paths.h"
#include "tintwell_host/files/failure.h"

namespace program {
namespace {

namespace fs = std::filesystem;

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

fs::path defaultHome() {
    const std::string state = environment("XDG_STATE_HOME");
    if (!state.empty()) return fs::path(state) / "tintwell-host";
    const std::string home = environment("HOME");
    if (home.empty()) throw Failure("HOME is not set; name a folder with --home");
    return fs::path(home) / ".local/state/tintwell-host";
}

}  // namespace

std::string enterHome(const std::string& chosen) {
    const fs::path home = fs::absolute(chosen.empty() ? defaultHome() : fs::path(chosen));
    std::error_code failed;
    fs::create_directories(home / "Library/Application Support", failed);
    if (failed) {
        throw Failure("cannot make the home '" + home.string() + "': " + failed.message(),
                      exitFor(failed.value()));
    }
    ::setenv("HOME", home.c_str(), 1);
    return home.string();
}

std::string logFile() {
    return tw::toUtf8(tw::dataPath(L"effect.log"));
}

}  // namespace program
