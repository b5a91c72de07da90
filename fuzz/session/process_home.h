// What outlives sessions: the process's temporary home and the effect's log in it.
#pragma once

#include <string>

#include "tests/support/temp_folder.h"

namespace session_fuzz {

// The log as it grows. Keeps the file open from the beginning to the end of the process, as the
// effect itself opens it anew for each line.
class LogWatch {
public:
    explicit LogWatch(const std::string& file);
    ~LogWatch();
    LogWatch(const LogWatch&) = delete;
    LogWatch& operator=(const LogWatch&) = delete;

    // Empties a log that has grown large.
    void beginSession();
    // What was added since the session began must be there unchanged, and nothing after it.
    void endSession();
    // What was added since the last call, looked through: whole lines, the first of them with a
    // time. Anything else is a violation.
    std::string added();

private:
    std::string textFrom(long begin) const;

    int file_;
    long seen_ = 0;
    std::string session_;  // what it has added
};

struct ProcessHome {
    ProcessHome();

    // For the files that the user picks.
    std::string cubes() const { return home / "cubes"; }
    // Without the files that a session may leave.
    void clear();

    twtest::TempHome home;
    LogWatch log{home.dataFile("effect.log")};
};

// Made on first use.
ProcessHome& processHome();

// The descriptor that the system would give out next: a file that is left open raises it.
int nextDescriptor();

}  // namespace session_fuzz
