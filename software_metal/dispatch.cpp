#include "software_metal/dispatch.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <numeric>
#include <thread>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "software_metal/ledger.h"

namespace software_metal {
namespace {

void runGroup(const Dispatch& dispatch, std::size_t index) {
    const std::size_t width = dispatch.groups.width;
    const std::size_t height = dispatch.groups.height;
    const unsigned group[3] = {static_cast<unsigned>(index % width),
                               static_cast<unsigned>(index / width % height),
                               static_cast<unsigned>(index / width / height)};
    const unsigned threads[3] = {dispatch.threads.width, dispatch.threads.height,
                                 dispatch.threads.depth};
    dispatch.kernel->run(dispatch.slots.data(), group, threads);
}

// The processor's mode in which subnormals count as zeros, for this thread and the scope's life.
class SubnormalScope {
public:
    explicit SubnormalScope(bool flushes) : before_(mode()) {
        if (flushes) setMode(before_ | kFlush);
    }
    ~SubnormalScope() { setMode(before_); }
    SubnormalScope(const SubnormalScope&) = delete;
    SubnormalScope& operator=(const SubnormalScope&) = delete;

private:
#if defined(__x86_64__)
    using Mode = unsigned;
    static constexpr Mode kFlush = 0x8040;  // results, operands
    static Mode mode() { return _mm_getcsr(); }
    static void setMode(Mode mode) { _mm_setcsr(mode); }
#else
    using Mode = std::uint64_t;
    static constexpr Mode kFlush = std::uint64_t{1} << 24;
    static Mode mode() {
        Mode mode;
        asm volatile("mrs %0, fpcr" : "=r"(mode));
        return mode;
    }
    static void setMode(Mode mode) { asm volatile("msr fpcr, %0" : : "r"(mode)); }
#endif
    Mode before_;
};

}  // namespace

std::size_t scattered(std::size_t n, std::size_t total) {
    // A stride near the golden section of the whole, with no divisor in common with it.
    std::size_t stride = total * 5 / 8 + 1;
    while (std::gcd(stride, total) != 1)
        ++stride;
    return n * stride % total;
}

void run(const Dispatch& dispatch) {
    const std::size_t total = dispatch.groups.total();
    std::atomic<std::size_t> next{0};
    const bool flushes = flushesSubnormals();
    const auto work = [&] {
        const SubnormalScope scope(flushes);
        for (std::size_t n; (n = next.fetch_add(1)) < total;)
            runGroup(dispatch, scattered(n, total));
    };
    // At least two, so that groups truly meet on a machine of one core as well.
    const std::size_t wanted = std::clamp(std::thread::hardware_concurrency(), 2U, 8U);
    std::vector<std::thread> helpers;
    for (std::size_t i = 1; i < std::min(wanted, total); ++i)
        helpers.emplace_back(work);
    work();
    for (std::thread& helper : helpers)
        helper.join();
}

}  // namespace software_metal
