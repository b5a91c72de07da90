#include <dlfcn.h>

#include "tintwell_host/session/own_module.h"

namespace program {

// The loader knows the program's path by any address in it.
std::filesystem::path moduleBesideProgram() {
    Dl_info program = {};
    ::dladdr(reinterpret_cast<const void*>(&moduleBesideProgram), &program);
    return std::filesystem::canonical(program.dli_fname).parent_path() /
           "Tintwell.plugin/Contents/MacOS/Tintwell";
}

}  // namespace program
