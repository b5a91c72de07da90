// The computed picture.
#include "looks/scene.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

TEST(Scene, reachesFromBlackToWhite_inEveryChannel) {
    const std::vector<float> scene = looks::computedScene(160, 90);
    ASSERT_EQ(scene.size(), 160u * 90u * 4u);
    for (std::size_t k = 0; k < 3; ++k) {
        float low = 1.0f;
        float high = 0.0f;
        for (std::size_t at = k; at < scene.size(); at += 4) {
            low = std::min(low, scene[at]);
            high = std::max(high, scene[at]);
        }
        EXPECT_LT(low, 0.05f);
        EXPECT_GT(high, 0.85f);
    }
}

}  // namespace
