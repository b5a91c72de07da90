#include <OpenColorIO/OpenColorIO.h>

#include "bench/compare/contestants.h"

namespace bench {
namespace {

namespace ocio = OCIO_NAMESPACE;

ocio::ConstCPUProcessorRcPtr processorFor(const std::string& cubePath, ocio::BitDepth depth) {
    const auto file = ocio::FileTransform::Create();
    file->setSrc(cubePath.c_str());
    file->setInterpolation(ocio::INTERP_TETRAHEDRAL);
    return ocio::Config::CreateRaw()->getProcessor(file)->getOptimizedCPUProcessor(
        depth, depth, ocio::OPTIMIZATION_DEFAULT);
}

template <typename Frame>
Contestant grading(const Contest& contest, const Frame& src, const Frame& dst,
                   ocio::BitDepth depth) {
    const auto processor = processorFor(contest.cubePath, depth);
    return {"OpenColorIO", [processor, depth, calls = contest.calls, &src, &dst] {
                const auto description = [depth](const auto& image) {
                    return ocio::PackedImageDesc(
                        image.pixels, image.width, image.height, ocio::CHANNEL_ORDERING_BGRA, depth,
                        ocio::AutoStride, ocio::AutoStride, ocio::AutoStride);
                };
                const auto from = description(src.image);
                auto to = description(dst.image);
                return timed(calls, [&] { processor->apply(from, to); });
            }};
}

}  // namespace

void addOpenColorIO(Contest& contest, std::vector<Contestant>& floats,
                    std::vector<Contestant>& bytes) {
    floats.push_back(grading(contest, contest.floatSrc, contest.floatDst, ocio::BIT_DEPTH_F32));
    bytes.push_back(grading(contest, contest.byteSrc, contest.byteDst, ocio::BIT_DEPTH_UINT8));
}

}  // namespace bench
