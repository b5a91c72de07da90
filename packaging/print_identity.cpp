// Prints what an effect module tells a host about itself, at registration and at GLOBAL_SETUP, in
// the form of packaging/identity.json: print_identity MODULE > told.json
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "effect/entry_points.h"

namespace {

[[noreturn]] void giveUp(const char* reason) {
    std::fprintf(stderr, "print_identity: %s\n", reason);
    std::exit(EXIT_FAILURE);
}

template <class Function>
Function* entryPoint(void* module, const char* name) {
    void* found = dlsym(module, name);
    if (found == nullptr) giveUp(dlerror());
    return reinterpret_cast<Function*>(found);
}

void printText(const char* key, const A_u_char* text) {
    std::printf("    \"%s\": \"%s\",\n", key, reinterpret_cast<const char*>(text));
}

A_Err printRegistration(PF_PluginDataPtr, const A_u_char* name, const A_u_char* matchName,
                        const A_u_char* category, const A_u_char* entryPointName, A_long,
                        A_long apiMajor, A_long apiMinor, A_long reservedInfo,
                        const A_u_char* supportUrl) {
    printText("name", name);
    printText("match_name", matchName);
    printText("category", category);
    printText("entry_point", entryPointName);
    printText("support_url", supportUrl);
    std::printf("    \"spec_version\": [%d, %d],\n", apiMajor, apiMinor);
    std::printf("    \"reserved_info\": \"%d\",\n", reservedInfo);
    return 0;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) giveUp("usage: print_identity MODULE");
    void* module = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    if (module == nullptr) giveUp(dlerror());
    std::puts("{");
    entryPoint<decltype(PluginDataEntryFunction2)>(module, "PluginDataEntryFunction2")(
        nullptr, printRegistration, nullptr, "", "");

    PF_InData in{};
    in.appl_id = 0x46585443;  // After Effects
    PF_OutData out{};
    entryPoint<decltype(EffectMain)>(module, "EffectMain")(PF_Cmd_GLOBAL_SETUP, &in, &out, nullptr,
                                                           nullptr, nullptr);
    std::printf("    \"version\": \"0x%X\",\n", static_cast<unsigned>(out.my_version));
    std::printf("    \"out_flags\": \"0x%X\",\n", static_cast<unsigned>(out.out_flags));
    std::printf("    \"out_flags2\": \"0x%X\"\n}\n", static_cast<unsigned>(out.out_flags2));
    return EXIT_SUCCESS;
}
