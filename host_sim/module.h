// A loadable effect module.
#pragma once

#include <filesystem>

#include "host_api/registration.h"

namespace host_sim {

// Threads: like a plain value.
class Module {
public:
    // Loads the module with its symbols kept to itself. Throws SimError. A module stays loaded to
    // the end of the process, as in the hosts: texts of its own may still be shown.
    explicit Module(const std::filesystem::path& file);

    // All three throw SimError when the module exports no such name.
    PF_PluginDataEntryFunction2Ptr registration() const;
    PF_FilterProc command(const char* name) const;
    void* symbol(const char* name) const;

private:
    std::filesystem::path file_;
    void* library_;
};

}  // namespace host_sim
