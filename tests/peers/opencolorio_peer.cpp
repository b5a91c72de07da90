#include "tests/peers/peer.h"

#ifdef TINTWELL_WITH_OPENCOLORIO
#include <OpenColorIO/OpenColorIO.h>
namespace ocio = OCIO_NAMESPACE;
#endif

namespace peers {

#ifdef TINTWELL_WITH_OPENCOLORIO
std::optional<Pixels> applyWithOpenColorIO(const std::string& cube, const Pixels& in) {
    const auto transform = ocio::FileTransform::Create();
    transform->setSrc(cube.c_str());
    transform->setInterpolation(ocio::INTERP_TETRAHEDRAL);
    const auto processor = ocio::Config::CreateRaw()->getProcessor(transform);
    const auto cpu = processor->getOptimizedCPUProcessor(ocio::BIT_DEPTH_F32, ocio::BIT_DEPTH_F32,
                                                         ocio::OPTIMIZATION_NONE);
    Pixels out = in;
    ocio::PackedImageDesc image(out.rgba.data(), out.width, out.height,
                                ocio::CHANNEL_ORDERING_RGBA);
    cpu->apply(image);
    return out;
}
#else
std::optional<Pixels> applyWithOpenColorIO(const std::string&, const Pixels&) {
    return std::nullopt;
}
#endif

}  // namespace peers
