#include "base/apple_bridge_error.h"
#include "bridges/iwork/cell_grid.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace bridge {
namespace {

CellGrid gridOf(size_t rows, size_t columns) {
    return CellGrid(rows, std::vector<IWorkCellValue>(columns, IWorkCellValue{1.0}));
}

std::string refusal(const CellGrid& grid) {
    try {
        checkGrid(grid);
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::malformedRequest);
        return error.message();
    }
    return "";
}

const std::string empty = "Malformed bridge request: Numbers values must contain at least one non-empty row.";
const std::string ragged = "Malformed bridge request: Numbers values must form a rectangular grid.";
const std::string large = "Malformed bridge request: Numbers operations support at most 10,000 cells.";

TEST(CellGrid, HasAtLeastOneCell) {
    EXPECT_EQ(refusal({}), empty);
    EXPECT_EQ(refusal({{}}), empty);
    EXPECT_EQ(refusal({{}, {}}), empty);
    EXPECT_EQ(refusal(gridOf(1, 1)), "");
}

TEST(CellGrid, HasNoEmptyRow) {
    EXPECT_EQ(refusal({{{1.0}}, {}}), empty);
    EXPECT_EQ(refusal({{}, {{1.0}, {2.0}}}), empty);
}

TEST(CellGrid, IsRectangular) {
    EXPECT_EQ(refusal({{{1.0}, {"x"}}, {{true}}}), ragged);
    EXPECT_EQ(refusal({{{true}}, {{1.0}, {"x"}}}), ragged);
    EXPECT_EQ(refusal({{{1.0}, {"x"}}, {{true}, {nullptr}}}), "");
}

TEST(CellGrid, HasAtMostTenThousandCells) {
    EXPECT_EQ(refusal(gridOf(100, 100)), "");
    EXPECT_EQ(refusal(gridOf(100, 101)), large);
    EXPECT_EQ(refusal(gridOf(1, 10'000)), "");
    EXPECT_EQ(refusal(gridOf(1, 10'001)), large);
    EXPECT_EQ(refusal(gridOf(10'000, 1)), "");
    EXPECT_EQ(refusal(gridOf(10'001, 1)), large);
}

TEST(CellGrid, ThatIsLargeAndRaggedIsCalledRagged) {
    auto grid = gridOf(10'001, 1);
    grid.back().push_back({2.0});
    EXPECT_EQ(refusal(grid), ragged);
    grid.push_back({});
    EXPECT_EQ(refusal(grid), empty);
}

std::string statements(const CellGrid& grid, int64_t column = 1, int64_t row = 1) {
    std::string script;
    appendCellStatements(script, grid, column, row);
    return script;
}

TEST(CellStatements, AreOneACellRowByRow) {
    EXPECT_EQ(statements({{{"a"}, {"b"}}, {{"c"}, {"d"}}}), "set value of cell \"A1\" to \"a\"\n"
                                                            "set value of cell \"B1\" to \"b\"\n"
                                                            "set value of cell \"A2\" to \"c\"\n"
                                                            "set value of cell \"B2\" to \"d\"");
}

TEST(CellStatements, CountFromTheFirstCell) {
    EXPECT_EQ(statements({{{1.0}, {2.0}}}, 26, 9), "set value of cell \"Z9\" to \"1\"\n"
                                                   "set value of cell \"AA9\" to \"2\"");
}

TEST(CellStatements, SayEachKindOfValue) {
    EXPECT_EQ(statements({{{"say \"hi\"\n"}}}), R"(set value of cell "A1" to "say \"hi\"\n")");
    EXPECT_EQ(statements({{{"=SUM(A1:A2)"}}}), "set value of cell \"A1\" to \"=SUM(A1:A2)\"");
    EXPECT_EQ(statements({{{12.5}}}), R"(set value of cell "A1" to "12.5")");
    EXPECT_EQ(statements({{{true}}}), R"(set value of cell "A1" to true)");
    EXPECT_EQ(statements({{{false}}}), R"(set value of cell "A1" to false)");
    EXPECT_EQ(statements({{{nullptr}}}), R"(set value of cell "A1" to missing value)");
    EXPECT_EQ(statements({{{""}}}), R"(set value of cell "A1" to "")");
}

TEST(DecimalText, IsAsShortAsCanBe) {
    for (const auto& [number, text] : std::initializer_list<std::pair<double, const char*>>{
             {0, "0"},
             {-0.0, "-0"},
             {5, "5"},
             {-1, "-1"},
             {0.1, "0.1"},
             {0.1 + 0.2, "0.30000000000000004"},
             {-12.5, "-12.5"},
             {1.0 / 3, "0.3333333333333333"},
             {500'000, "500000"},
             {0.0001, "0.0001"},
             {0.000001, "0.000001"},
             {0.0000001, "1e-07"},
             {9007199254740991, "9007199254740991"},
             {9007199254740993, "9007199254740992"},
             {1234567890123456, "1234567890123456"},
             {1e15, "1000000000000000"},
             {1e16, "1e+16"},
             {1e300, "1e+300"},
             {std::numeric_limits<double>::denorm_min(), "5e-324"},
             {std::numeric_limits<double>::max(), "1.7976931348623157e+308"}})
        EXPECT_EQ(decimalText(number), text);
}

TEST(DecimalText, ReadsBackAsTheSameNumber) {
    std::mt19937_64 random(1);
    for (int round = 0; round < 100'000; ++round) {
        const uint64_t bits = random();
        double number;
        static_assert(sizeof number == sizeof bits);
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isfinite(number)) continue;
        ASSERT_EQ(std::strtod(decimalText(number).c_str(), nullptr), number);
        const double usual = std::ldexp(number, -std::ilogb(number) + static_cast<int>(random() % 60) - 20);
        ASSERT_EQ(std::strtod(decimalText(usual).c_str(), nullptr), usual);
        ASSERT_LE(decimalText(usual).size(), 25u);
    }
}

} // namespace
} // namespace bridge
