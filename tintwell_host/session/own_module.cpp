#include "tintwell_host/session/own_module.h"

namespace program {

std::filesystem::path moduleBesideProgram() {
    return std::filesystem::read_symlink("/proc/self/exe").parent_path() / "Tintwell.so";
}

}  // namespace program
