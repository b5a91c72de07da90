// How many threads a render starts depends on the machine; this program always has four processors.
#include <thread>

__attribute__((visibility("default"))) unsigned std::thread::hardware_concurrency() noexcept {
    return 4;
}
