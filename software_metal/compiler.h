// Kernel text becomes machine code: compiled by clang as C++14 behind language/prelude.h, which
// makes it the Metal language, and loaded into this process.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace software_metal {

// Runs one thread group. buffers: by binding index; group: the group's place in the grid; threads:
// the group's extent. Three numbers each.
using RunGroup = void (*)(void* const* buffers, const unsigned* group, const unsigned* threads);

struct Kernel {
    std::string name;
    std::vector<int> buffers;  // binding indices that must be bound
    RunGroup run = nullptr;
};

// The code of one program text.
class KernelModule {
public:
    explicit KernelModule(void* library) : library_(library) {}
    ~KernelModule();
    KernelModule(const KernelModule&) = delete;
    KernelModule& operator=(const KernelModule&) = delete;

    std::vector<Kernel> kernels;

private:
    void* library_;
};

// A text that was compiled before is not compiled again. Null on failure, *error then holding the
// compiler's words. Throws std::bad_alloc only. Threads: any; calls wait for one another. What was
// compiled stays to the end of the process.
std::shared_ptr<const KernelModule> compileKernels(const std::string& text, bool fastMaths,
                                                   std::string* error);

}  // namespace software_metal
