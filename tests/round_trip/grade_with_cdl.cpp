#include "tests/round_trip/grades.h"

#ifdef TINTWELL_WITH_OPENCOLORIO
#include <OpenColorIO/OpenColorIO.h>
namespace ocio = OCIO_NAMESPACE;
#endif

namespace round_trip {

#ifdef TINTWELL_WITH_OPENCOLORIO
std::optional<Picture> gradeWithCdl(const Picture& picture) {
    const auto cdl = ocio::CDLTransform::Create();
    const double slope[] = {1.1, 1.0, 0.9};
    const double offset[] = {0.02, 0.0, 0.02};
    const double power[] = {0.9, 1.0, 1.1};
    cdl->setSlope(slope);
    cdl->setOffset(offset);
    cdl->setPower(power);
    cdl->setSat(1.2);
    const bool is8 = picture.depth == program::Depth::k8;
    const auto depth = is8 ? ocio::BIT_DEPTH_UINT8 : ocio::BIT_DEPTH_F32;
    const auto cpu = ocio::Config::CreateRaw()->getProcessor(cdl)->getOptimizedCPUProcessor(
        depth, depth, ocio::OPTIMIZATION_NONE);
    Picture graded = picture;
    void* pixels = is8 ? static_cast<void*>(graded.bytes.data()) : graded.floats.data();
    ocio::PackedImageDesc image(pixels, graded.width, graded.height, ocio::CHANNEL_ORDERING_RGBA,
                                depth, ocio::AutoStride, ocio::AutoStride, ocio::AutoStride);
    cpu->apply(image);
    return graded;
}
#else
std::optional<Picture> gradeWithCdl(const Picture&) {
    return std::nullopt;
}
#endif

std::string cdlInWords() {
    return "CDL: slope 1.1 1 0.9, offset 0.02 0 0.02, power 0.9 1 1.1, saturation 1.2";
}

}  // namespace round_trip
