#include "host_sim/module.h"

#include <dlfcn.h>

#include <string>

#include "host_sim/values/error.h"

namespace host_sim {

Module::Module(const std::filesystem::path& file)
    : file_(file),
      library_(dlopen(std::filesystem::absolute(file).c_str(), RTLD_LOCAL | RTLD_NOW)) {
    if (library_ == nullptr) {
        const char* reason = dlerror();
        throw SimError("The module " + file.string() +
                       " cannot be loaded: " + (reason == nullptr ? "no reason given" : reason));
    }
}

PF_PluginDataEntryFunction2Ptr Module::registration() const {
    return reinterpret_cast<PF_PluginDataEntryFunction2Ptr>(symbol("PluginDataEntryFunction2"));
}

PF_FilterProc Module::command(const char* name) const {
    return reinterpret_cast<PF_FilterProc>(symbol(name));
}

void* Module::symbol(const char* name) const {
    void* found = dlsym(library_, name);
    if (found == nullptr) {
        throw SimError("The module " + file_.string() + " exports no " + name + ".");
    }
    return found;
}

}  // namespace host_sim
