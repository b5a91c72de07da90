// Random frames, and what the engine makes of them.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "host_sim/values/frame.h"
#include "native/src/lut_engine.h"
#include "tests/support/random.h"

namespace twtest {

inline bool isFloat(const host_sim::Frame& frame) {
    return frame.format() == PrPixelFormat_BGRA_4444_32f;
}

// Any byte, and floats from -0.25 to 1.25.
inline void scatter(host_sim::Frame& frame, std::uint64_t seed) {
    Random random(seed);
    for (int y = 0; y < frame.height(); ++y) {
        for (int x = 0; x < frame.width(); ++x) {
            if (isFloat(frame)) {
                host_sim::RgbaF pixel;
                for (float& channel : pixel)
                    channel = random.between(-0.25f, 1.25f);
                frame.setPixelF(x, y, pixel);
            } else {
                host_sim::Rgba8 pixel;
                for (std::uint8_t& channel : pixel)
                    channel = static_cast<std::uint8_t>(random.below(256));
                frame.setPixel8(x, y, pixel);
            }
        }
    }
}

inline host_sim::Frame scattered(PrPixelFormat format, int width, int height,
                                 std::uint64_t seed = 1, const host_sim::FrameLayout& layout = {}) {
    host_sim::Frame frame(format, width, height, layout);
    scatter(frame, seed);
    return frame;
}

template <class View>
View viewOf(const host_sim::Frame& frame) {
    const PF_EffectWorld world = frame.world();
    View view;
    view.pixels = reinterpret_cast<decltype(View::pixels)>(world.data);
    view.width = world.width;
    view.height = world.height;
    view.rowBytes = world.rowbytes;
    view.order = frame.format() == PrPixelFormat_ARGB_4444_8u ? tw::kOrderARGB : tw::kOrderBGRA;
    return view;
}

// `output` as it must be after a render: graded by the engine itself.
inline host_sim::Frame graded(const tw::Lut3D& lut, const host_sim::Frame& input,
                              host_sim::Frame output, float amount) {
    if (isFloat(output)) {
        tw::applyF(lut, viewOf<tw::ImageF>(input), viewOf<tw::ImageF>(output), amount);
    } else {
        tw::apply8(lut, viewOf<tw::Image8>(input), viewOf<tw::Image8>(output), amount);
    }
    return output;
}

inline host_sim::Frame patterned(int n, host_sim::Frame output) {
    if (isFloat(output)) {
        tw::fillProbeF(n, viewOf<tw::ImageF>(output));
    } else {
        tw::fillProbe8(n, viewOf<tw::Image8>(output));
    }
    return output;
}

// Byte for byte, so that floats count with all their bits.
inline ::testing::AssertionResult samePixels(const host_sim::Frame& expected,
                                             const host_sim::Frame& actual) {
    const std::vector<std::uint8_t> a = expected.pixelBytes(), b = actual.pixelBytes();
    if (a.size() != b.size()) {
        return ::testing::AssertionFailure()
               << "expected " << a.size() << " bytes of pixels, got " << b.size();
    }
    const auto pixel = static_cast<std::size_t>(expected.bytesPerPixel());
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (a[i] == b[i]) continue;
        const std::size_t row = static_cast<std::size_t>(expected.width()) * pixel;
        return ::testing::AssertionFailure()
               << "first difference in byte " << i % pixel << " of pixel (" << i % row / pixel
               << ", " << i / row << "): expected " << int{a[i]} << ", got " << int{b[i]};
    }
    return ::testing::AssertionSuccess();
}

}  // namespace twtest
