#include "adapters/libreoffice/helper/cell_blocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace bridge::office {

namespace {

CellChange change(int32_t column, int32_t row, double value = 0) {
    return {column, row, value};
}

std::vector<CellRange> rangesOf(const std::vector<CellChange>& changes) {
    std::vector<CellRange> ranges;
    for (const auto& block : blocksOf(changes))
        ranges.push_back(block.range);
    return ranges;
}

} // namespace

void PrintTo(const CellRange& range, std::ostream* out) {
    *out << range.firstColumn << ',' << range.firstRow << " to " << range.lastColumn << ',' << range.lastRow;
}

TEST(CellBlocks, AreOneForARectangleInAnyOrder) {
    std::vector<CellChange> changes;
    for (int32_t row = 2; row < 6; ++row)
        for (int32_t column = 1; column < 4; ++column)
            changes.push_back(change(column, row, row * 10 + column));
    std::shuffle(changes.begin(), changes.end(), std::mt19937(3));
    const auto blocks = blocksOf(changes);
    ASSERT_EQ(blocks.size(), 1u);
    EXPECT_EQ(blocks[0].range, (CellRange{1, 2, 3, 5}));
    ASSERT_EQ(blocks[0].changes.size(), 12u);
    EXPECT_EQ(blocks[0].changes[0]->value, CellValue(21.0));
    EXPECT_EQ(blocks[0].changes[1]->value, CellValue(22.0));
    EXPECT_EQ(blocks[0].changes[11]->value, CellValue(53.0));
}

TEST(CellBlocks, AreNoneForNothing) {
    EXPECT_TRUE(blocksOf({}).empty());
}

TEST(CellBlocks, EndWhereARowOrAColumnIsMissing) {
    EXPECT_THAT(rangesOf({change(0, 0), change(0, 2)}),
                testing::ElementsAre(CellRange{0, 0, 0, 0}, CellRange{0, 2, 0, 2}));
    EXPECT_THAT(rangesOf({change(0, 0), change(2, 0)}),
                testing::ElementsAre(CellRange{0, 0, 0, 0}, CellRange{2, 0, 2, 0}));
    EXPECT_THAT(rangesOf({change(0, 0), change(1, 0), change(0, 1)}),
                testing::ElementsAre(CellRange{0, 0, 1, 0}, CellRange{0, 1, 0, 1}));
}

TEST(CellBlocks, GrowSideBySide) {
    EXPECT_THAT(rangesOf({change(0, 0), change(5, 0), change(0, 1), change(5, 1)}),
                testing::ElementsAre(CellRange{0, 0, 0, 1}, CellRange{5, 0, 5, 1}));
}

TEST(CellBlocks, TakeTheLastChangeOfACell) {
    const std::vector changes{change(0, 0, 1), change(1, 0, 5), change(0, 0, 2), change(0, 0, 3)};
    const auto blocks = blocksOf(changes);
    ASSERT_EQ(blocks.size(), 1u);
    ASSERT_EQ(blocks[0].changes.size(), 2u);
    EXPECT_EQ(blocks[0].changes[0], &changes[3]);
    EXPECT_EQ(blocks[0].changes[1], &changes[1]);
}

TEST(CellBlocks, HaveEachCellOnceWhateverIsChanged) {
    std::mt19937 random(7);
    for (int turn = 0; turn < 200; ++turn) {
        std::vector<CellChange> changes;
        std::map<std::pair<int32_t, int32_t>, CellValue> expected, found;
        for (unsigned index = random() % 40; index > 0; --index) {
            changes.push_back(change(static_cast<int32_t>(random() % 6), static_cast<int32_t>(random() % 6), index));
            expected[{changes.back().column, changes.back().row}] = changes.back().value;
        }
        for (const auto& [range, its] : blocksOf(changes)) {
            auto next = its.begin();
            for (auto row = range.firstRow; row <= range.lastRow; ++row)
                for (auto column = range.firstColumn; column <= range.lastColumn; ++column) {
                    ASSERT_NE(next, its.end());
                    EXPECT_TRUE(found.emplace(std::pair(column, row), (*next++)->value).second);
                }
            EXPECT_EQ(next, its.end());
        }
        EXPECT_EQ(found, expected);
    }
}

} // namespace bridge::office
