// apply8 and applyF: which pixels are read and written, in pictures of every shape. Run once for
// bytes and once for floats.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <type_traits>
#include <vector>

#include "native/src/engine/parallel_rows.h"
#include "native/src/lut_engine.h"
#include "tests/support/float_steps.h"
#include "tests/support/guarded_picture.h"
#include "tests/support/luts.h"

namespace {

using twtest::GuardedPicture;
using twtest::PictureShape;

constexpr float kAmount = 0.75f;

const tw::Lut3D& lut() {
    static const tw::Lut3D made = twtest::scatteredLut(9, 30);
    return made;
}

void apply(const tw::Image8& src, const tw::Image8& dst) {
    tw::apply8(lut(), src, dst, kAmount);
}
void apply(const tw::ImageF& src, const tw::ImageF& dst) {
    tw::applyF(lut(), src, dst, kAmount);
}

// Red, green, blue and alpha as they must stand in the destination.
template <typename Channel>
std::array<Channel, 4> graded(GuardedPicture<Channel>& src, int x, int y) {
    float in[3];
    for (int c = 0; c < 3; ++c) {
        if constexpr (std::is_same_v<Channel, float>)
            in[c] = src.at(x, y, c);
        else
            in[c] = twtest::fromByteStep(src.at(x, y, c));
    }
    const auto out = twtest::gradeSteps(lut(), in, kAmount);
    std::array<Channel, 4> pixel{};
    for (std::size_t c = 0; c < 3; ++c) {
        if constexpr (std::is_same_v<Channel, float>)
            pixel[c] = out[c];
        else
            pixel[c] = twtest::toByteStep(out[c]);
    }
    pixel[3] = src.at(x, y, 3);
    return pixel;
}

template <typename Channel>
class ApplyLayout : public ::testing::Test {
protected:
    using Picture = GuardedPicture<Channel>;

    // Compares the top left width x height pixels of dst with the graded ones of src, and looks at
    // everything else that dst must not have changed.
    static ::testing::AssertionResult isGraded(Picture src, Picture& dst, int width, int height) {
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const auto expected = graded(src, x, y);
                for (std::size_t c = 0; c < 4; ++c) {
                    if (dst.at(x, y, static_cast<int>(c)) != expected[c]) {
                        return ::testing::AssertionFailure()
                               << "first difference at x " << x << ", y " << y << ", channel " << c
                               << ": expected " << +expected[c] << ", got "
                               << +dst.at(x, y, static_cast<int>(c));
                    }
                }
            }
        }
        return dst.untouchedOutside(width, height);
    }

    static ::testing::AssertionResult grades(const PictureShape& from, const PictureShape& to) {
        Picture src(from);
        Picture dst(to);
        src.scatter(31);
        const Picture before = src;
        apply(src.view(), dst.view());
        if (const auto guards = src.guardsIntact(); !guards)
            return ::testing::AssertionFailure() << "source: " << guards.message();
        return isGraded(before, dst, std::min(from.width, to.width),
                        std::min(from.height, to.height))
               << "; from " << from.width << " x " << from.height << " order " << from.order
               << " to " << to.width << " x " << to.height << " order " << to.order;
    }
};

using Depths = ::testing::Types<std::uint8_t, float>;

class DepthNames {
public:
    template <typename Channel>
    static std::string GetName(int) {
        return std::is_same_v<Channel, float> ? "Float" : "Byte";
    }
};

TYPED_TEST_SUITE(ApplyLayout, Depths, DepthNames);

TYPED_TEST(ApplyLayout, convertsOrder_ofEveryPair) {
    for (const std::int32_t from : {0, 1, 2, 3, -1, 1000}) {
        for (const std::int32_t to : {0, 1, 2, 3, -1, 1000})
            EXPECT_TRUE(this->grades({7, 5, from}, {7, 5, to}));
    }
}

TYPED_TEST(ApplyLayout, gradesEveryPixel_ofEveryWidth) {
    for (int width = 1; width <= 40; ++width)
        EXPECT_TRUE(this->grades({width, 3, tw::kOrderBGRA}, {width, 3, tw::kOrderBGRA}));
}

TYPED_TEST(ApplyLayout, gradesEveryRow_atEverySplit) {
    for (const unsigned threads : {1U, 2U, 8U, 32U}) {
        tw::setHardwareThreads(threads);
        for (const int rows : {1, 15, 16, 31, 32, 33, 47, 48, 100, 545})
            EXPECT_TRUE(this->grades({5, rows}, {5, rows})) << threads << " threads";
    }
    tw::setHardwareThreads(0);
    EXPECT_TRUE(this->grades({5, 100}, {5, 100})) << "as many threads as the platform has";
}

TYPED_TEST(ApplyLayout, gradesOnePixel) {
    EXPECT_TRUE(this->grades({1, 1}, {1, 1}));
}

TYPED_TEST(ApplyLayout, respectsPadding_ofEitherPicture) {
    for (const int from : {0, 1, 4, 37}) {
        for (const int to : {0, 1, 4, 37}) {
            EXPECT_TRUE(this->grades({9, 34, tw::kOrderBGRA, from}, {9, 34, tw::kOrderARGB, to}))
                << "padding " << from << " and " << to;
        }
    }
}

TYPED_TEST(ApplyLayout, followsNegativeRowBytes_ofEitherPicture) {
    const PictureShape down = {9, 34, tw::kOrderARGB, 8, false};
    const PictureShape up = {9, 34, tw::kOrderBGRA, 8, true};
    EXPECT_TRUE(this->grades(up, down));
    EXPECT_TRUE(this->grades(down, up));
    EXPECT_TRUE(this->grades(up, up));
}

TYPED_TEST(ApplyLayout, writesCommonTopLeft_ofDifferentSizes) {
    EXPECT_TRUE(this->grades({9, 40}, {5, 50}));
    EXPECT_TRUE(this->grades({5, 50}, {9, 40}));
    EXPECT_TRUE(this->grades({9, 40}, {5, 33}));
    EXPECT_TRUE(this->grades({5, 33}, {9, 40}));
    EXPECT_TRUE(this->grades({5, 33, 0, 8, true}, {9, 40, 1, 8, true}));
}

TYPED_TEST(ApplyLayout, touchesNothing_whenAPictureIsEmpty) {
    const PictureShape whole = {6, 40};
    for (const PictureShape& empty :
         {PictureShape{0, 40}, PictureShape{6, 0}, PictureShape{-1, 40}, PictureShape{6, -40},
          PictureShape{-6, -40}, PictureShape{0, 0}, PictureShape{-2147483647 - 1, 3},
          PictureShape{3, -2147483647 - 1}}) {
        SCOPED_TRACE(std::to_string(empty.width) + " x " + std::to_string(empty.height));
        typename TestFixture::Picture src(whole);
        typename TestFixture::Picture dst(whole);
        src.scatter(32);
        auto emptyView = src.view();
        emptyView.width = empty.width;
        emptyView.height = empty.height;
        apply(emptyView, dst.view());
        EXPECT_TRUE(dst.untouchedOutside(0, 0));
        emptyView = dst.view();
        emptyView.width = empty.width;
        emptyView.height = empty.height;
        apply(src.view(), emptyView);
        EXPECT_TRUE(dst.untouchedOutside(0, 0));
    }
}

TYPED_TEST(ApplyLayout, touchesNothing_whenViewsAreDefault) {
    typename TestFixture::Picture dst({3, 3});
    const decltype(dst.view()) none;
    apply(none, dst.view());
    apply(none, none);
    EXPECT_TRUE(dst.untouchedOutside(0, 0));
}

TYPED_TEST(ApplyLayout, gradesInPlace_alsoIntoAnotherOrder) {
    for (const std::int32_t from : {0, 1, 2}) {
        for (const std::int32_t to : {0, 1, 2}) {
            typename TestFixture::Picture picture({13, 40, from});
            picture.scatter(33);
            typename TestFixture::Picture before = picture;
            auto out = picture.view();
            out.order = to;
            apply(picture.view(), out);
            typename TestFixture::Picture expected({13, 40, to});
            apply(before.view(), expected.view());
            ASSERT_TRUE(picture.guardsIntact());
            for (int i = 0; i < 13 * 40 * 4; ++i) {
                const int x = i / 4 % 13;
                const int y = i / 52;
                const auto* pixel = &picture.at(x, y, 0) - twtest::channelPlaces(from)[0];
                ASSERT_EQ(expected.at(x, y, i % 4),
                          pixel[twtest::channelPlaces(to)[static_cast<std::size_t>(i % 4)]])
                    << "orders " << from << " to " << to << ", x " << x << ", y " << y;
            }
        }
    }
}

TYPED_TEST(ApplyLayout, leavesSourceAlone) {
    typename TestFixture::Picture src({13, 40});
    typename TestFixture::Picture dst({13, 40});
    src.scatter(34);
    typename TestFixture::Picture before = src;
    apply(src.view(), dst.view());
    for (int i = 0; i < 13 * 40 * 4; ++i)
        ASSERT_EQ(before.at(i / 4 % 13, i / 52, i % 4), src.at(i / 4 % 13, i / 52, i % 4)) << i;
}

}  // namespace
