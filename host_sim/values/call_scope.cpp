#include "host_sim/values/call_scope.h"

#include <array>
#include <utility>

namespace host_sim {
namespace {

thread_local const CallScope* innermost = nullptr;

constexpr std::array<std::pair<PF_Cmd, const char*>, 18> kNames{{
    {PF_Cmd_ABOUT, "PF_Cmd_ABOUT"},
    {PF_Cmd_GLOBAL_SETUP, "PF_Cmd_GLOBAL_SETUP"},
    {PF_Cmd_GLOBAL_SETDOWN, "PF_Cmd_GLOBAL_SETDOWN"},
    {PF_Cmd_PARAMS_SETUP, "PF_Cmd_PARAMS_SETUP"},
    {PF_Cmd_SEQUENCE_SETUP, "PF_Cmd_SEQUENCE_SETUP"},
    {PF_Cmd_SEQUENCE_RESETUP, "PF_Cmd_SEQUENCE_RESETUP"},
    {PF_Cmd_SEQUENCE_FLATTEN, "PF_Cmd_SEQUENCE_FLATTEN"},
    {PF_Cmd_SEQUENCE_SETDOWN, "PF_Cmd_SEQUENCE_SETDOWN"},
    {PF_Cmd_DO_DIALOG, "PF_Cmd_DO_DIALOG"},
    {PF_Cmd_FRAME_SETUP, "PF_Cmd_FRAME_SETUP"},
    {PF_Cmd_RENDER, "PF_Cmd_RENDER"},
    {PF_Cmd_FRAME_SETDOWN, "PF_Cmd_FRAME_SETDOWN"},
    {PF_Cmd_USER_CHANGED_PARAM, "PF_Cmd_USER_CHANGED_PARAM"},
    {PF_Cmd_UPDATE_PARAMS_UI, "PF_Cmd_UPDATE_PARAMS_UI"},
    {PF_Cmd_EVENT, "PF_Cmd_EVENT"},
    {PF_Cmd_ARBITRARY_CALLBACK, "PF_Cmd_ARBITRARY_CALLBACK"},
    {PF_Cmd_SMART_PRE_RENDER, "PF_Cmd_SMART_PRE_RENDER"},
    {PF_Cmd_SMART_RENDER, "PF_Cmd_SMART_RENDER"},
}};

}  // namespace

CallScope::CallScope(PF_Cmd command, std::string description)
    : command_(command), description_(std::move(description)), outer_(innermost) {
    innermost = this;
}

CallScope::~CallScope() {
    innermost = outer_;
}

const CallScope* CallScope::current() {
    return innermost;
}

std::string CallScope::describeCurrent() {
    if (innermost == nullptr) return "in no command of this thread";
    return "during " + innermost->description_;
}

std::string commandName(PF_Cmd command) {
    for (const auto& [number, name] : kNames) {
        if (number == command) return name;
    }
    return "command " + std::to_string(command);
}

}  // namespace host_sim
