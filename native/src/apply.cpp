#include <algorithm>

#include "native/src/apply_rows.h"
#include "native/src/lut_engine.h"
#include "native/src/parallel_rows.h"

namespace tw {
namespace {

// Runs the row form over the common area of the two pictures.
template <typename Image, typename RowForm>
void applyRows(const Lut3D& lut, const Image& src, const Image& dst, float amount,
               RowForm rowForm) {
    const int width = std::min(src.width, dst.width);
    const int height = std::min(src.height, dst.height);
    const ChannelMap from = channelMap(src.order);
    const ChannelMap to = channelMap(dst.order);
    parallelRows(height, [&](int firstRow, int endRow) {
        for (int y = firstRow; y < endRow; ++y) {
            rowForm(lut, rowOf(src, y), from, rowOf(dst, y), to, width, amount);
        }
    });
}

}  // namespace

void apply8(const Lut3D& lut, const Image8& src, const Image8& dst, float amount) {
    applyRows(lut, src, dst, amount, applyRow8Scalar);
}

void applyF(const Lut3D& lut, const ImageF& src, const ImageF& dst, float amount) {
    applyRows(lut, src, dst, amount, applyRowFScalar);
}

}  // namespace tw
