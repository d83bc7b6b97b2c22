#include "base/apple_bridge_error.h"
#include "bridges/iwork/numbers_range.h"

#include <gtest/gtest.h>
#include <tuple>

namespace bridge {
namespace {

std::string refusal(std::string_view text) {
    try {
        parseNumbersRange(text);
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::malformedRequest);
        return error.message();
    }
    return "";
}

const std::string notation = "Malformed bridge request: Numbers range must use A1 notation, for example A1:C10.";
const std::string corners =
    "Malformed bridge request: Numbers range must run from its top-left cell to its bottom-right cell.";

// Text, first column and row, columns and rows.
using Parts = std::tuple<std::string, int64_t, int64_t, int64_t, int64_t>;

Parts parse(std::string_view text) {
    const auto range = parseNumbersRange(text);
    return {range.text, range.firstColumn, range.firstRow, range.columns, range.rows};
}

TEST(NumbersRange, IsTwoCells) {
    EXPECT_EQ(parse("B2:C3"), Parts("B2:C3", 2, 2, 2, 2));
    EXPECT_EQ(parse("A1:C10"), Parts("A1:C10", 1, 1, 3, 10));
    EXPECT_EQ(parse("A1:A1"), Parts("A1:A1", 1, 1, 1, 1));
}

TEST(NumbersRange, OfOneCellHasOneColumnAndOneRow) {
    EXPECT_EQ(parse("A1"), Parts("A1", 1, 1, 1, 1));
    EXPECT_EQ(parse("ZZZ999999"), Parts("ZZZ999999", 18'278, 999'999, 1, 1));
}

TEST(NumbersRange, LosesTheSpaceAroundItAndIsInUpperCase) {
    EXPECT_EQ(parse("  b2:c3 \t"), Parts("B2:C3", 2, 2, 2, 2));
    EXPECT_EQ(parse("\r\n aa10\u00a0\u2029"), Parts("AA10", 27, 10, 1, 1));
}

TEST(NumbersRange, CountsColumnsAsSpreadsheetsDo) {
    for (const auto& [cell, column] : std::initializer_list<std::pair<const char*, int64_t>>{
             {"Z1", 26}, {"AA1", 27}, {"AZ1", 52}, {"BA1", 53}, {"ZZ1", 702}, {"AAA1", 703}, {"ZZZ1", 18'278}})
        EXPECT_EQ(parseNumbersRange(cell).firstColumn, column) << cell;
}

TEST(NumbersRange, MayBeAsLargeAsItsNotation) {
    EXPECT_EQ(parse("A1:ZZZ999999"), Parts("A1:ZZZ999999", 1, 1, 18'278, 999'999));
    EXPECT_EQ(parse("Z9:AA10"), Parts("Z9:AA10", 26, 9, 2, 2));
}

TEST(NumbersRange, InAnyOtherNotationIsRefused) {
    for (const auto* text :
         {"",     " ",     "A",      "1",        "A0",    "A01",    "AAAA1",   "A1000000", "A1:", ":A1",
          "A1:B", "A1:B0", "A1:B02", "A1:B2:C3", "A1 B2", "A1 :B2", "A1: B2",  "$A$1",     "A-1", "1A",
          "A1B2", "A1;B2", "R1C1",   "Ä1",       "А1",    "A１",    "A1:C10x", "Sheet.A1"})
        EXPECT_EQ(refusal(text), notation) << text;
    EXPECT_EQ(refusal(std::string("A1\0", 3)), notation);
    EXPECT_EQ(refusal(std::string(1'000'000, 'A')), notation);
    EXPECT_EQ(refusal("\xff\xfe"), notation);
}

TEST(NumbersRange, ThatRunsLeftOrUpIsRefused) {
    for (const auto* text : {"C3:B2", "B1:A1", "A2:A1", "AA1:Z1", "A10:A9", "B1:A2", "A2:B1"})
        EXPECT_EQ(refusal(text), corners) << text;
}

TEST(CellName, IsReadBack) {
    EXPECT_EQ(cellName(1, 1), "A1");
    EXPECT_EQ(cellName(26, 2), "Z2");
    EXPECT_EQ(cellName(27, 7), "AA7");
    EXPECT_EQ(cellName(52, 52), "AZ52");
    EXPECT_EQ(cellName(10'000, 1), "NTP1");
    for (int64_t column = 1; column <= 18'278; ++column) {
        const auto range = parseNumbersRange(cellName(column, 999'999));
        ASSERT_EQ(range.firstColumn, column);
        ASSERT_EQ(range.firstRow, 999'999);
    }
}

} // namespace
} // namespace bridge
