// The order in which thread groups run.
#include "software_metal/dispatch.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using software_metal::scattered;

TEST(Scattered, givesEveryGroupOnce) {
    for (const std::size_t total : {1U, 2U, 3U, 7U, 64U, 8160U, 7919U}) {
        std::vector<int> seen(total, 0);
        for (std::size_t n = 0; n < total; ++n)
            ++seen[scattered(n, total)];
        EXPECT_EQ(seen, std::vector<int>(total, 1)) << total;
    }
}

TEST(Scattered, isNotTheOrderOfRows) {
    int neighbours = 0;
    for (std::size_t n = 0; n + 1 < 100; ++n)
        neighbours += scattered(n, 100) + 1 == scattered(n + 1, 100) ? 1 : 0;
    EXPECT_EQ(neighbours, 0);
}

}  // namespace
