// How many threads a render starts depends on the machine; in this program every machine is alike.
#include <thread>

__attribute__((visibility("default"))) unsigned std::thread::hardware_concurrency() noexcept {
    return 4;
}
