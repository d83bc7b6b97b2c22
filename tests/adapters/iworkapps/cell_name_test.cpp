#include "adapters/iworkapps/cell_name.h"

#include <gtest/gtest.h>

namespace bridge::iworkapps {

TEST(CellName, IsColumnLettersAndARowNumber) {
    EXPECT_EQ(parseCellName("A1"), (CellPosition{0, 0}));
    EXPECT_EQ(parseCellName("z999999"), (CellPosition{25, 999'998}));
    EXPECT_EQ(parseCellName("AA10"), (CellPosition{26, 9}));
    EXPECT_EQ(parseCellName("zZz1"), (CellPosition{18'277, 0}));
}

TEST(CellName, IsNothingElse) {
    for (const auto* name : {"", "A", "1", "A0", "A01", "AAAA1", "A12345678", "A1 ", " A1", "A-1", "A+1", "1A", "A1B",
                             "Ä1", "A1:B2", "$A$1"})
        EXPECT_EQ(parseCellName(name), std::nullopt) << name;
    EXPECT_EQ(parseCellName(std::string_view("A1\0", 3)), std::nullopt);
}

TEST(CellName, IsWrittenAsItIsRead) {
    for (const int32_t column : {0, 1, 25, 26, 51, 52, 701, 702, 16'383, 18'277})
        EXPECT_EQ(parseCellName(cellName({column, 41})), (CellPosition{column, 41})) << column;
    EXPECT_EQ(cellName({0, 0}), "A1");
    EXPECT_EQ(columnName(26), "AA");
    EXPECT_EQ(columnName(701), "ZZ");
    EXPECT_EQ(columnName(702), "AAA");
}

TEST(RangeName, LiesBetweenAnyTwoCorners) {
    const office::CellRange range{1, 2, 3, 4};
    EXPECT_EQ(parseRangeName("B3:D5"), range);
    EXPECT_EQ(parseRangeName("D5:B3"), range);
    EXPECT_EQ(parseRangeName("b5:d3"), range);
    EXPECT_EQ(rangeName(range), "B3:D5");
}

TEST(RangeName, CanBeOneCell) {
    EXPECT_EQ(parseRangeName("C2"), (office::CellRange{2, 1, 2, 1}));
}

TEST(RangeName, NeedsBothItsCorners) {
    for (const auto* name : {"", ":", "A1:", ":A1", "A1:B", "A1::B2", "A1:B2:C3", "A:B", "1:2"})
        EXPECT_EQ(parseRangeName(name), std::nullopt) << name;
}

} // namespace bridge::iworkapps
