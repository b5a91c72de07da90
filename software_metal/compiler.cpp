#include "software_metal/compiler.h"

#include <dlfcn.h>
#include <stdlib.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <sstream>
#include <utility>

#include "software_metal/ledger.h"
#include "software_metal/program.h"
#include "software_metal/signature.h"

namespace software_metal {
namespace {

namespace fs = std::filesystem;

// A folder of its own that is gone when the work is done: a loaded library needs its file no
// longer.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::error_code ignored;
        std::string pattern = (fs::temp_directory_path(ignored) / "software-metal.XXXXXX").string();
        if (::mkdtemp(pattern.data())) folder_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        if (!folder_.empty()) fs::remove_all(folder_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::string file(const char* name) const { return folder_ + "/" + name; }

private:
    std::string folder_;
};

// 64-bit Arm needs no flag for it.
bool hasFusedMultiplyAdd() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("fma");
#else
    return false;
#endif
}

// No attribute is unknown to the device's compiler that is one of the language; double arithmetic
// by accident must show. As Apple's compiler does with fast maths off, a product and a sum of one
// expression are fused unless the text has the pragma, where the processor can.
std::vector<std::string> command(bool fastMaths, const TemporaryFolder& folder) {
    std::vector<std::string> words = {SOFTWARE_METAL_CLANG,
                                      "-std=c++14",
                                      "-O2",
                                      "-shared",
                                      "-fPIC",
                                      "-nostdinc++",
                                      "-fvisibility=hidden",
                                      "-fno-exceptions",
                                      "-fno-rtti",
                                      "-fno-caret-diagnostics",
                                      "-ffp-contract=on",
                                      "-Wall",
                                      "-Wextra",
                                      "-Werror=double-promotion",
                                      "-Wno-unknown-attributes",
                                      "-Wno-unknown-pragmas",
                                      "-Wno-unused-function",
                                      "-I",
                                      SOFTWARE_METAL_LANGUAGE};
    if (hasFusedMultiplyAdd()) words.push_back("-mfma");
    if (fastMaths) words.push_back("-ffast-math");
    std::istringstream flags(SOFTWARE_METAL_FLAGS);
    for (std::string word; flags >> word;)
        words.push_back(word);
    words.insert(words.end(), {"-o", folder.file("kernel.so"), folder.file("kernel.cpp")});
    return words;
}

// The Metal language's own pragma about floating point, in the words of this compiler.
std::string withClangsPragmas(std::string text) {
    const std::string metal = "#pragma METAL fp ", clang = "#pragma clang fp ";
    for (std::size_t at = 0; (at = text.find(metal, at)) != std::string::npos; at += clang.size())
        text.replace(at, metal.size(), clang);
    return text;
}

void writeSource(const std::string& file, const std::string& text,
                 const std::vector<Signature>& kernels) {
    std::ofstream out(file, std::ios::binary);
    out << "#include \"prelude.h\"\n#line 1 \"program_source\"\n"
        << withClangsPragmas(text) << "\n#line 1 \"runners\"\n#include \"arguments.h\"\n";
    for (const Signature& kernel : kernels)
        out << runnerText(kernel);
}

bool build(const std::string& text, const std::vector<Signature>& kernels, bool fastMaths,
           const TemporaryFolder& folder, std::string* error) {
    writeSource(folder.file("kernel.cpp"), text, kernels);
    const auto begin = std::chrono::steady_clock::now();
    const ProgramResult result = runProgram(command(fastMaths, folder));
    const std::chrono::duration<double, std::milli> spent =
        std::chrono::steady_clock::now() - begin;
    count([&](Counts& counts) {
        ++counts.compilations;
        counts.lastCompileMs = spent.count();
        counts.lastFastMaths = fastMaths;
    });
    if (result.status != 0) *error = "program_source failed to compile:\n" + result.output;
    return result.status == 0;
}

Kernel kernelOf(void* library, const Signature& signature) {
    Kernel kernel;
    kernel.name = signature.name;
    for (const Parameter& parameter : signature.parameters) {
        if (parameter.buffer >= 0) kernel.buffers.push_back(parameter.buffer);
    }
    kernel.run = reinterpret_cast<RunGroup>(::dlsym(library, runnerName(signature).c_str()));
    return kernel;
}

std::shared_ptr<const KernelModule> compileAnew(const std::string& text, bool fastMaths,
                                                std::string* error) {
    std::vector<Signature> signatures;
    if (!findKernels(text, signatures, error)) return nullptr;
    const TemporaryFolder folder;
    if (!build(text, signatures, fastMaths, folder, error)) return nullptr;
    void* library = ::dlopen(folder.file("kernel.so").c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        *error = ::dlerror();
        return nullptr;
    }
    auto module = std::make_shared<KernelModule>(library);
    for (const Signature& signature : signatures)
        module->kernels.push_back(kernelOf(library, signature));
    return module;
}

// What was compiled before, as a driver keeps it too. Never destroyed: a queue's thread may outlive
// main().
struct Kept {
    std::mutex mutex;
    std::map<std::pair<std::string, bool>, std::shared_ptr<const KernelModule>> modules;
};

Kept& kept() {
    static auto* const modules = new Kept;
    return *modules;
}

}  // namespace

KernelModule::~KernelModule() {
    ::dlclose(library_);
}

std::shared_ptr<const KernelModule> compileKernels(const std::string& text, bool fastMaths,
                                                   std::string* error) {
    const std::lock_guard lock(kept().mutex);
    auto& module = kept().modules[{text, fastMaths}];
    if (module) {
        count([&](Counts& counts) {
            ++counts.compilations;
            counts.lastFastMaths = fastMaths;
        });
    } else {
        module = compileAnew(text, fastMaths, error);
    }
    return module;
}

}  // namespace software_metal
