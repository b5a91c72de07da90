#include "tintwell_host/jobs/frame_set.h"

#include <gtest/gtest.h>

#include "tintwell_host/files/failure.h"
#include "tintwell_host/jobs/sequence.h"

namespace program_test {
namespace {

using program::chooseFrames;
using program::parseFrameSet;
using Frames = std::vector<int>;

struct SetRow {
    const char* text;
    int end;
    Frames frames;
    int cut;
};

// As people and render managers write them.
TEST(FrameSet, namesTheseFrames) {
    const SetRow rows[] = {
        {"14", 100, {14}, 0},
        {"1-5", 100, {1, 2, 3, 4, 5}, 0},
        {"1-10x3", 100, {1, 4, 7, 10}, 0},
        {"1-9x3", 100, {1, 4, 7}, 0},
        {"1-2,8-9", 100, {1, 2, 8, 9}, 0},
        {"1-2, 8 ,9", 100, {1, 2, 8, 9}, 0},
        {"-8--5", 100, {-8, -7, -6, -5}, 0},
        {"-2-1", 100, {-2, -1, 0, 1}, 0},
        {"-3", 100, {-3}, 0},
        {"0", 100, {0}, 0},
        {"007", 100, {7}, 0},
        {"5,1-3", 100, {5, 1, 2, 3}, 0},
        // An overlap renders a frame once.
        {"1-4,3-6", 100, {1, 2, 3, 4, 5, 6}, 0},
        {"2,2,2", 100, {2}, 0},
        // The last chunk reaches past the end of the job.
        {"8-14", 10, {8, 9, 10}, 4},
        {"1-100x40", 50, {1, 41}, 1},
        {"9-10,20-22", 10, {9, 10}, 3},
        {"1-999999999", 2, {1, 2}, 999999997},
    };
    for (const SetRow& row : rows) {
        const program::ChosenFrames chosen = chooseFrames(parseFrameSet(row.text), row.end);
        EXPECT_EQ(chosen.frames, row.frames) << row.text;
        EXPECT_EQ(chosen.cut, row.cut) << row.text;
    }
}

TEST(FrameSet, refusesWhatIsNone) {
    for (const char* text : {"", "x", "1-", "-", "1-2-3", "1x2x3", "1,", ",1", "1-10x0", "1-10x-1",
                             "1.5", "1 2", "1234567890", "--5", "1-10y2", "+1", "$F"}) {
        try {
            parseFrameSet(text);
            ADD_FAILURE() << "'" << text << "' was taken";
        } catch (const program::Failure& failure) {
            EXPECT_EQ(failure.what(), "'" + std::string(text) +
                                          "' is no set of frames; write it as 1-240, 1-240x2, 17 "
                                          "or 1-10,20-30");
            EXPECT_EQ(failure.exit(), program::Exit::kWrongUsage);
        }
    }
}

TEST(FrameSet, refusesARangeThatEndsBeforeItBegins) {
    EXPECT_THROW(parseFrameSet("5-2"), program::Failure);
    EXPECT_THROW(parseFrameSet("-5--8"), program::Failure);
}

TEST(FrameSet, refusesMoreFramesThanAJobCanHave) {
    EXPECT_EQ(chooseFrames(parseFrameSet("1-1000000"), 999999999).frames.size(), 1000000u);
    EXPECT_THROW(chooseFrames(parseFrameSet("0-1000000"), 999999999), program::Failure);
    EXPECT_THROW(chooseFrames(parseFrameSet("-999999999-999999999"), 999999999), program::Failure);
}

TEST(FrameSet, refusesASetThatLiesPastTheEnd) {
    EXPECT_THROW(chooseFrames(parseFrameSet("11-20"), 10), program::Failure);
}

TEST(FramePattern, namesTheseFiles) {
    const struct {
        const char* pattern;
        int frame;
        const char* file;
    } rows[] = {
        {"s.%04d.exr", 7, "s.0007.exr"},       {"s.%d.exr", 7, "s.7.exr"},
        {"s.####.exr", 7, "s.0007.exr"},       {"s.#.exr", 12, "s.12.exr"},
        {"s.@@@@.exr", 7, "s.0007.exr"},       {"s.@.exr", 7, "s.7.exr"},
        {"s.$F4.exr", 7, "s.0007.exr"},        {"s.$F.exr", 7, "s.7.exr"},
        {"s.%04d.exr", 12345, "s.12345.exr"},  {"s.%04d.exr", -8, "s.-008.exr"},
        {"s.####.exr", -8, "s.-008.exr"},      {"s.%d.exr", -8, "s.-8.exr"},
        {"a#/s.%04d.exr", 7, "a#/s.0007.exr"}, {"s.exr", 7, "s.exr"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(program::frameFile(row.pattern, row.frame), row.file) << row.pattern;
}

TEST(FramePattern, isSoughtInTheFileNameAlone) {
    EXPECT_FALSE(program::isSequence("shot##/in.exr"));
    EXPECT_FALSE(program::isSequence("100%/in.exr"));
    EXPECT_TRUE(program::isSequence("shot##/in.##.exr"));
}

}  // namespace
}  // namespace program_test
