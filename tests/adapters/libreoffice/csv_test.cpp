#include "adapters/libreoffice/helper/csv.h"

#include <gtest/gtest.h>

namespace bridge::office {

namespace {

using Rows = std::vector<std::vector<std::string>>;

} // namespace

TEST(CSV, HasRowsOfCells) {
    EXPECT_EQ(parseCSV("a,b\nc,d\n"), (Rows{{"a", "b"}, {"c", "d"}}));
    EXPECT_EQ(parseCSV("a"), (Rows{{"a"}}));
    EXPECT_EQ(parseCSV(""), Rows{});
}

TEST(CSV, KeepsEmptyCells) {
    EXPECT_EQ(parseCSV(",\n\n,,a\n"), (Rows{{"", ""}, {""}, {"", "", "a"}}));
    EXPECT_EQ(parseCSV("a,"), (Rows{{"a", ""}}));
    EXPECT_EQ(parseCSV("\"\",\"\"\n"), (Rows{{"", ""}}));
}

TEST(CSV, TakesWhatIsInQuotationMarksAsItIs) {
    EXPECT_EQ(parseCSV("\"a,b\nc\",d\n"), (Rows{{"a,b\nc", "d"}}));
    EXPECT_EQ(parseCSV("\"say \"\"more\"\"\",\"\"\"\"\n"), (Rows{{"say \"more\"", "\""}}));
    EXPECT_EQ(parseCSV("\"\"\"a\"\"\"\n"), (Rows{{"\"a\""}}));
}

TEST(CSV, LeavesAQuotationMarkWithinACell) {
    EXPECT_EQ(parseCSV("5\" wide,b\n"), (Rows{{"5\" wide", "b"}}));
}

TEST(CSV, EndsWithTheTextEvenWithinQuotationMarks) {
    EXPECT_EQ(parseCSV("\"a,b"), (Rows{{"a,b"}}));
    EXPECT_EQ(parseCSV("\""), (Rows{{""}}));
}

} // namespace bridge::office
