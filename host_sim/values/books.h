// What a simulated host writes down: the commands it sent, and everything that an effect did wrong.
#pragma once

#include <cstddef>
#include <mutex>
#include <string>
#include <vector>

#include "host_api/arbitrary_data.h"
#include "host_api/commands.h"

namespace host_sim {

// One finished command.
struct CallRecord {
    PF_Cmd command = 0;
    int instance = 0;                   // 0: sent to the effect, not to one applied instance
    PF_FunctionSelector selector = -1;  // of PF_Cmd_ARBITRARY_CALLBACK
    PF_Err error = 0;
};

// Threads: every function from any thread. Lock order: this mutex is the innermost one of the
// simulator.
class Books {
public:
    // Adds a sentence without a full stop; the command that the calling thread is in and the stop
    // are added.
    void problem(const std::string& sentence);
    // The same for what is found when the host closes: only the stop is added.
    void problemAtEnd(const std::string& sentence);
    void finished(const CallRecord& call);

    // All problems so far, oldest first. They count as seen from then on.
    std::vector<std::string> problems();
    bool hasUnseenProblems() const;
    // Commands in the order in which they ended.
    std::vector<CallRecord> calls() const;

private:
    mutable std::mutex mutex_;
    std::vector<std::string> problems_;
    std::vector<CallRecord> calls_;
    std::size_t seen_ = 0;
};

}  // namespace host_sim
