#include <cstring>
#include <ctime>

#include "bench/compare/contestants.h"
#include "native/src/engine/parallel_rows.h"
#include "native/src/rows/row_kernels.h"

namespace bench {
namespace {

constexpr float kAmount = 0.8f;

template <typename Frame>
Contestant copying(int calls, const Frame& src, const Frame& dst) {
    return {"memcpy", [calls, &src, &dst] {
                return timed(calls,
                             [&] { std::memcpy(dst.image.pixels, src.image.pixels, src.bytes()); });
            }};
}

template <auto apply, typename Frame>
Contestant grading(const Contest& contest, const char* name, const Frame& src, const Frame& dst) {
    return {std::string("tintwell ") + name, [&contest, name, &src, &dst] {
                tw::forceRowKernels(name);
                tw::setHardwareThreads(1);
                return timed(contest.calls,
                             [&] { apply(contest.lut, src.image, dst.image, kAmount); });
            }};
}

}  // namespace

double threadSeconds() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void addOurs(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes) {
    floats.push_back(copying(contest.calls, contest.floatSrc, contest.floatDst));
    bytes.push_back(copying(contest.calls, contest.byteSrc, contest.byteDst));
    for (const tw::RowKernels& kernel : tw::runnableRowKernels()) {
        floats.push_back(
            grading<tw::applyF>(contest, kernel.name, contest.floatSrc, contest.floatDst));
        bytes.push_back(
            grading<tw::apply8>(contest, kernel.name, contest.byteSrc, contest.byteDst));
    }
}

}  // namespace bench
