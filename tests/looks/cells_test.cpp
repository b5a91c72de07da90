// Where the cells lie, against the engine's word for every pixel.
#include "looks/pattern/cells.h"

#include <gtest/gtest.h>

#include "native/src/lut_engine.h"

namespace {

using looks::CellReader;
using looks::Grid;

// The corner pixels of each span have the patch's colour in the pattern, and the spans fill the
// picture.
void expectEnginesCells(int size, int width, int height) {
    SCOPED_TRACE(std::to_string(size) + " on " + std::to_string(width) + "x" +
                 std::to_string(height));
    const Grid grid = looks::gridOf(size, width, height);
    const auto steps = static_cast<std::size_t>(size);
    const float k = 1.0f / static_cast<float>(size - 1);
    CellReader reader({nullptr, width, height}, grid);
    for (std::size_t index = 0; index < grid.cells(); ++index) {
        const looks::Span columns = reader.columnOf(index);
        const looks::Span rows = reader.rowOf(index);
        const std::size_t level[] = {index % steps, index / steps % steps, index / steps / steps};
        for (const int x : {columns.begin, columns.end - 1}) {
            for (const int y : {rows.begin, rows.end - 1}) {
                float colour[3];
                tw::probeColour(size, grid.columns, grid.rows, width, height, x, y, colour);
                for (int c = 0; c < 3; ++c) {
                    const float value =
                        index < grid.patches() ? k * static_cast<float>(level[c]) : 0.0f;
                    ASSERT_EQ(colour[c], value) << "cell " << index << " at " << x << "," << y;
                }
            }
        }
    }
    EXPECT_EQ(reader.columnOf(0).begin, 0);
    EXPECT_EQ(reader.columnOf(grid.cells() - 1).end, width);
    EXPECT_EQ(reader.rowOf(grid.cells() - 1).end, height);
}

TEST(Cells, areTheEngines) {
    expectEnginesCells(2, 1920, 1080);
    expectEnginesCells(9, 641, 359);
    expectEnginesCells(17, 1000, 1000);
    expectEnginesCells(33, 1524, 858);
    expectEnginesCells(42, 2048, 1536);
    expectEnginesCells(64, 4098, 2305);
}

TEST(Cells, followOnEachOther) {
    for (int cell = 0; cell + 1 < 94; ++cell) {
        EXPECT_EQ(looks::spanOf(cell, 94, 1920).end, looks::spanOf(cell + 1, 94, 1920).begin);
        EXPECT_GE(looks::spanOf(cell, 94, 1920).length(), looks::leastPatchSide(94, 1920));
    }
}

TEST(Cells, areReadInside) {
    EXPECT_EQ(looks::insideOf({10, 16}).begin, 12);
    EXPECT_EQ(looks::insideOf({10, 16}).end, 14);
    EXPECT_EQ(looks::insideOf({0, 40}).begin, 10);
    EXPECT_EQ(looks::insideOf({0, 40}).end, 30);
}

}  // namespace
