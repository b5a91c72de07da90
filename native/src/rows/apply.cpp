#include <algorithm>

#include "native/src/engine/parallel_rows.h"
#include "native/src/lut_engine.h"
#include "native/src/rows/row_kernels.h"

namespace tw {
namespace {

// From this size on a picture is written around the caches: it would push out everything else and
// be gone itself before anyone reads it.
constexpr std::int64_t kStreamBytes = std::int64_t{24} << 20;

// Runs the row kernel over the common area of the two pictures.
template <typename Image, typename RowKernel>
void applyRows(const Lut3D& lut, const Image& src, const Image& dst, float amount,
               RowKernel rowKernel) {
    const int width = std::min(src.width, dst.width);
    const int height = std::min(src.height, dst.height);
    const ChannelMap from = channelMap(src.order);
    const ChannelMap to = channelMap(dst.order);
    parallelRows(height, [&](int firstRow, int endRow) {
        for (int y = firstRow; y < endRow; ++y) {
            rowKernel(lut, rowOf(src, y), from, rowOf(dst, y), to, width, amount);
        }
    });
}

// In place the lines are in a cache already, as they have just been read.
bool worthStreaming(const ImageF& src, const ImageF& dst) {
    const std::int64_t pixels =
        std::int64_t{std::min(src.width, dst.width)} * std::min(src.height, dst.height);
    constexpr std::int64_t pixelBytes = 4 * sizeof(float);
    return src.pixels != dst.pixels && pixels >= kStreamBytes / pixelBytes;
}

}  // namespace

void apply8(const Lut3D& lut, const Image8& src, const Image8& dst, float amount) {
    applyRows(lut, src, dst, amount, rowKernels().row8);
}

void applyF(const Lut3D& lut, const ImageF& src, const ImageF& dst, float amount) {
    const RowKernels& kernels = rowKernels();
    applyRows(lut, src, dst, amount, worthStreaming(src, dst) ? kernels.streamF : kernels.rowF);
}

}  // namespace tw
