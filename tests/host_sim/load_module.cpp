// Loads a module in the simulated host and renders a frame: load_module MODULE. Links the system's
// own libraries alone, so that scripts/mac can run it under the hardened runtime.
#include <cstdio>
#include <exception>

#include "host_sim/host.h"

int main(int count, char** arguments) {
    if (count != 2) {
        std::fputs("usage: load_module MODULE\n", stderr);
        return 2;
    }
    try {
        host_sim::Host host(arguments[1], host_sim::premierePro());
        host.start();
        const host_sim::Frame in(host.format(32), 16, 9);
        host_sim::Frame out(host.format(32), 16, 9);
        const PF_Err error = host.apply().render(in, out).error;
        const auto problems = host.close();
        for (const std::string& problem : problems)
            std::fprintf(stderr, "load_module: %s\n", problem.c_str());
        if (error != 0) std::fprintf(stderr, "load_module: rendering gave %d\n", error);
        if (error != 0 || !problems.empty()) return 1;
        std::puts("loaded and rendered");
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "load_module: %s\n", failure.what());
        return 1;
    }
}
