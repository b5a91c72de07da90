// Compiles the kernel on this machine's Metal device and prints the device's name: the first thing
// to try on a Mac.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "gpu/metal_lut.h"

int main() {
    void* device = twmetal::DefaultDevice();
    if (device == nullptr) {
        std::fputs("try_metal: no Metal device\n", stderr);
        return EXIT_FAILURE;
    }
    std::string error;
    void* pipeline = twmetal::CreatePipeline(device, &error);
    const std::string name = twmetal::DeviceName(device);
    if (pipeline == nullptr) {
        std::fprintf(stderr, "try_metal: %s: %s\n", name.c_str(), error.c_str());
        return EXIT_FAILURE;
    }
    std::printf("the kernel compiles on %s\n", name.c_str());
    twmetal::Release(pipeline);
    twmetal::Release(device);
    return EXIT_SUCCESS;
}
