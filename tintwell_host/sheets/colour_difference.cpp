#include "tintwell_host/sheets/colour_difference.h"

#include <lcms2.h>

#include <algorithm>
#include <new>

namespace program {
namespace {

// CIE Lab of sRGB colours.
std::vector<cmsCIELab> labOf(const std::vector<float>& colours) {
    std::vector<double> limited(colours.size());
    std::ranges::transform(colours, limited.begin(), [](float value) {
        return value > 0.0f ? std::min(static_cast<double>(value), 1.0) : 0.0;
    });
    const cmsHPROFILE screen = cmsCreate_sRGBProfile();
    const cmsHPROFILE lab = cmsCreateLab4Profile(nullptr);
    const cmsHTRANSFORM transform =
        cmsCreateTransform(screen, TYPE_RGB_DBL, lab, TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC,
                           cmsFLAGS_NOOPTIMIZE | cmsFLAGS_NOCACHE);
    std::vector<cmsCIELab> out(colours.size() / 3);
    if (transform) {
        cmsDoTransform(transform, limited.data(), out.data(), static_cast<unsigned>(out.size()));
        cmsDeleteTransform(transform);
    }
    cmsCloseProfile(lab);
    cmsCloseProfile(screen);
    if (!transform) throw std::bad_alloc();
    return out;
}

}  // namespace

Difference differenceOf(const std::vector<float>& one, const std::vector<float>& other) {
    Difference difference;
    difference.steps = looks::stepsBetween(one, other);
    const std::vector<cmsCIELab> first = labOf(one);
    const std::vector<cmsCIELab> second = labOf(other);
    for (std::size_t i = 0; i < first.size(); ++i) {
        const double delta = cmsCIE2000DeltaE(&first[i], &second[i], 1.0, 1.0, 1.0);
        difference.largestDelta = std::max(difference.largestDelta, delta);
        difference.meanDelta += delta / static_cast<double>(first.size());
        difference.deltas.push_back(static_cast<float>(delta));
    }
    return difference;
}

}  // namespace program
