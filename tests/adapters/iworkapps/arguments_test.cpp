#include "adapters/iworkapps/arguments.h"

#include "adapters/iworkapps/cell_value.h"
#include "adapters/iworkapps/refusals.h"
#include "tests/adapters/iworkapps/office_script.h"

#include <cmath>
#include <limits>

namespace bridge::iworkapps {

TEST(TextArgument, HasLineFeedsForAllLineBreaks) {
    EXPECT_EQ(textArgument(std::string("a\rb\r\nc\nd\r")), "a\nb\nc\nd\n");
}

TEST(TextArgument, IsAText) {
    EXPECT_EQ(refusalOf([] { textArgument(int64_t{5}); }), (Refusal{-1700, "Can’t make 5 into type text."}));
    EXPECT_EQ(refusalOf([] { textArgument(MissingValue{}); }),
              (Refusal{-1700, "Can’t make missing value into type text."}));
}

TEST(PathArgument, IsAFileOrTheTextOfAnAbsolutePath) {
    EXPECT_EQ(pathArgument(File{"/tmp/a"}), "/tmp/a");
    EXPECT_EQ(pathArgument(std::string("/tmp/b")), "/tmp/b");
}

TEST(PathArgument, IsRefusedWhenItLeadsNowhere) {
    EXPECT_EQ(refusalOf([] { pathArgument(File{""}); }).number, -1700);
    EXPECT_EQ(refusalOf([] { pathArgument(std::string("plan.pages")); }).number, -1700);
    EXPECT_EQ(refusalOf([] { pathArgument(File{std::string("/a\0b", 4)}); }).number, -1700);
    EXPECT_EQ(refusalOf([] { pathArgument(true); }).number, -1700);
}

TEST(CountArgument, IsAWholeNumber) {
    EXPECT_EQ(countArgument(int64_t{12}), 12);
    EXPECT_EQ(countArgument(3.0), 3);
    const std::vector<Value> refused{int64_t{-1}, int64_t{1} << 40,  2.5,
                                     1e300,       std::string("12"), MissingValue{},
                                     true,        std::nan(""),      std::numeric_limits<double>::infinity()};
    for (const auto& value : refused)
        EXPECT_EQ(refusalOf([&] { countArgument(value); }).number, -1700) << sourceText(value);
}

TEST(CellValue, IsTextNumberTruthOrNothing) {
    EXPECT_EQ(cellValue(std::string("x")), CellValue(std::string("x")));
    EXPECT_EQ(cellValue(int64_t{2}), CellValue(2.0));
    EXPECT_EQ(cellValue(2.5), CellValue(2.5));
    EXPECT_EQ(cellValue(false), CellValue(false));
    EXPECT_EQ(cellValue(MissingValue{}), CellValue(std::monostate{}));
    for (const auto& value : {Value(Constant{"yes"}), Value(File{"/a"}), Value(List{}), Value(std::nan(""))})
        EXPECT_EQ(refusalOf([&] { cellValue(value); }).number, -1700) << sourceText(value);
}

TEST(Refusals, QuoteLongTextsShort) {
    const auto quoted = sourceText(std::string(59, 'a') + "ééé");
    EXPECT_EQ(quoted, '"' + std::string(59, 'a') + "…\"");
}

} // namespace bridge::iworkapps
