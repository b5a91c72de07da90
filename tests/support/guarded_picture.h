// Pictures in memory of their own, with canary values before, between and after the rows.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/support/random.h"

namespace twtest {

struct PictureShape {
    int width = 0;
    int height = 0;
    std::int32_t order = tw::kOrderBGRA;
    int padding = 8;        // unused channels after each row
    bool bottomUp = false;  // rows stored last to first, rowBytes negative
};

// Indices of red, green, blue and alpha.
inline std::array<int, 4> channelPlaces(std::int32_t order) {
    if (order == 0) return {2, 1, 0, 3};
    if (order == 1) return {1, 2, 3, 0};
    return {0, 1, 2, 3};
}

template <typename Channel>
class GuardedPicture {
public:
    static constexpr bool kIsFloat = std::is_same_v<Channel, float>;
    using View = std::conditional_t<kIsFloat, tw::ImageF, tw::Image8>;

    explicit GuardedPicture(const PictureShape& shape) : shape_(shape) {
        const auto rows = static_cast<std::size_t>(std::max(shape.height, 0));
        stride_ = static_cast<std::size_t>(std::max(shape.width, 0) * 4 + shape.padding);
        store_.assign(kGuard + rows * stride_ + kGuard, canary());
    }

    static Channel canary() {
        if constexpr (kIsFloat)
            return std::bit_cast<float>(0x7FC5CA4AU);
        else
            return 0xA5;
    }

    View view() {
        View view;
        view.pixels = store_.data() + rowStart(0);
        view.width = shape_.width;
        view.height = shape_.height;
        view.rowBytes = static_cast<std::int64_t>(stride_ * sizeof(Channel));
        if (shape_.bottomUp) view.rowBytes = -view.rowBytes;
        view.order = shape_.order;
        return view;
    }

    // channel: 0 red, 1 green, 2 blue, 3 alpha
    Channel& at(int x, int y, int channel) {
        const int place = channelPlaces(shape_.order)[static_cast<std::size_t>(channel)];
        return store_[rowStart(y) + static_cast<std::size_t>(x * 4 + place)];
    }

    const PictureShape& shape() const { return shape_; }

    void scatter(std::uint64_t seed) {
        Random random(seed);
        for (int y = 0; y < shape_.height; ++y) {
            for (int i = 0; i < shape_.width * 4; ++i) {
                if constexpr (kIsFloat)
                    at(i / 4, y, i % 4) = random.between(-0.25f, 1.25f);
                else
                    at(i / 4, y, i % 4) = static_cast<std::uint8_t>(random.below(256));
            }
        }
    }

    // True when nothing but the pixels of the top left width x height ones was written.
    ::testing::AssertionResult untouchedOutside(int width, int height) {
        std::vector<bool> mayChange(store_.size(), false);
        for (int y = 0; y < height; ++y) {
            for (int i = 0; i < width * 4; ++i)
                mayChange[rowStart(y) + static_cast<std::size_t>(i)] = true;
        }
        for (std::size_t i = 0; i < store_.size(); ++i) {
            if (!mayChange[i] && !isCanary(store_[i])) {
                return ::testing::AssertionFailure()
                       << "canary " << i << " overwritten (guard " << kGuard << ", row of "
                       << stride_ << ", " << shape_.width << " x " << shape_.height << ")";
            }
        }
        return ::testing::AssertionSuccess();
    }

    ::testing::AssertionResult guardsIntact() {
        return untouchedOutside(std::max(shape_.width, 0), std::max(shape_.height, 0));
    }

private:
    static constexpr std::size_t kGuard = 16;

    static bool isCanary(Channel value) {
        if constexpr (kIsFloat)
            return std::bit_cast<std::uint32_t>(value) == std::bit_cast<std::uint32_t>(canary());
        else
            return value == canary();
    }

    std::size_t rowStart(int y) const {
        const int stored = shape_.bottomUp ? std::max(shape_.height, 1) - 1 - y : y;
        return kGuard + static_cast<std::size_t>(stored) * stride_;
    }

    PictureShape shape_;
    std::size_t stride_ = 0;
    std::vector<Channel> store_;
};

using Picture8 = GuardedPicture<std::uint8_t>;
using PictureF = GuardedPicture<float>;

}  // namespace twtest
