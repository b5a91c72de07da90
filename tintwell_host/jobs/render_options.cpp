#include "tintwell_host/jobs/render_options.h"

#include <unistd.h>

namespace program {
namespace {

// Samples of a frame that exist at the same time, at most: the picture, the host's input and output
// and the copies of both that it compares with, and the encoder's.
constexpr std::int64_t kCopies = 7;

}  // namespace

std::optional<Depth> depthFor(const RenderOptions& options) {
    if (options.effect.gpu) return Depth::kFloat;
    if (options.depth.empty() && options.effect.host != "ae") return std::nullopt;
    return chosenDepth(options.depth, options.effect.host);
}

std::int64_t memoryBytes(const RenderOptions& options) {
    if (options.memory > 0) return std::int64_t{options.memory} << 20;
    const std::int64_t all = std::int64_t{::sysconf(_SC_PHYS_PAGES)} * ::sysconf(_SC_PAGESIZE);
    return all / 4;
}

std::int64_t frameBytes(std::int64_t pixels, Depth depth) {
    return pixels * 4 * (depth == Depth::k8 ? 1 : 4) * kCopies;
}

}  // namespace program
