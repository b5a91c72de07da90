#include <cstring>
#include <ctime>

#include "bench/compare/contestants.h"
#include "native/src/rows/row_kernels.h"

namespace bench {
namespace {

constexpr float kAmount = 0.8f;

template <typename Work>
double timed(Work work) {
    const double start = threadSeconds();
    work();
    return threadSeconds() - start;
}

template <typename Frame>
Contestant copying(const Frame& src, const Frame& dst) {
    return {"memcpy", [&] {
                return timed([&] { std::memcpy(dst.image.pixels, src.image.pixels, src.bytes()); });
            }};
}

template <typename Frame, typename RowKernel>
Contestant grading(const std::string& name, const tw::Lut3D& lut, const Frame& src,
                   const Frame& dst, RowKernel* kernel) {
    return {"tintwell " + name, [&lut, &src, &dst, kernel] {
                return timed([&] {
                    const tw::ChannelMap map = tw::channelMap(src.image.order);
                    for (int y = 0; y < src.image.height; ++y) {
                        kernel(lut, tw::rowOf(src.image, y), map, tw::rowOf(dst.image, y), map,
                               src.image.width, kAmount);
                    }
                });
            }};
}

}  // namespace

double threadSeconds() {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

void addOurs(Contest& contest, std::vector<Contestant>& floats, std::vector<Contestant>& bytes) {
    floats.push_back(copying(contest.floatSrc, contest.floatDst));
    bytes.push_back(copying(contest.byteSrc, contest.byteDst));
    for (const tw::RowKernels& kernel : tw::runnableRowKernels()) {
        floats.push_back(
            grading(kernel.name, contest.lut, contest.floatSrc, contest.floatDst, kernel.streamF));
        bytes.push_back(
            grading(kernel.name, contest.lut, contest.byteSrc, contest.byteDst, kernel.row8));
    }
}

}  // namespace bench
