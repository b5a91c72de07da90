// The command that the calling thread is in. The hosts' handle and suite callbacks carry no
// context, so that this is how the books can tell when something happened.
#pragma once

#include <string>

#include "host_api/commands.h"

namespace host_sim {

// Lives on the stack round one call into the effect; scopes nest, as an arbitrary-data callback may
// come in the middle of another command.
class CallScope {
public:
    CallScope(PF_Cmd command, std::string description);
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

    PF_Cmd command() const { return command_; }

    // The innermost scope of the calling thread; null outside, as on threads of the effect's own.
    static const CallScope* current();
    // Words for it: "during PF_Cmd_RENDER of instance 1", or "in no command of this thread".
    static std::string describeCurrent();

private:
    PF_Cmd command_;
    std::string description_;
    const CallScope* outer_;
};

// Published name of a command, or its number.
std::string commandName(PF_Cmd command);

}  // namespace host_sim
