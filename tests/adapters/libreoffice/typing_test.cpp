#include "adapters/libreoffice/helper/typing.h"

#include <gtest/gtest.h>
#include <ostream>
#include <vector>

namespace bridge::office {

void PrintTo(Typing typing, std::ostream* out) {
    *out << std::vector{"plain", "logical", "careful", "literal"}.at(static_cast<size_t>(typing));
}

namespace {

void expectAll(Typing typing, const std::vector<std::string>& texts) {
    for (const auto& text : texts)
        EXPECT_EQ(typingOf(text), typing) << text;
}

} // namespace

TEST(Typing, IsPlainForNumbersWithoutAFormat) {
    expectAll(Typing::plain, {"0", "7", "-12.5", "+3", ".5", "5.", "1e21", "1E+21", "2.5e-7", "00012"});
}

TEST(Typing, IsPlainForWhatCanOnlyBeText) {
    expectAll(Typing::plain, {"", " ", "fox", "Row 12", "B1", "5e", "1e+", "2 foxes", "truth", "TRUE 1", "may",
                              "\u00e9 5", "\xff", "3 \u20ac", "x = 1,2", std::string(49, '5') + "%"});
}

TEST(Typing, IsPlainForFormulasOfOneArgument) {
    expectAll(Typing::plain, {"=1+1", "=A1*2", "=SUM(A1:A9)", "="});
}

TEST(Typing, IsCarefulWhereCommasSeparateArguments) {
    expectAll(Typing::careful, {"=SUM(1,2)", "=IF(A1>2,\"a\",\"b\")", "={1}"});
}

TEST(Typing, IsCarefulForWhatMayHaveAFormat) {
    expectAll(Typing::careful, {"3 %",
                                "3%",
                                "$5",
                                "-$5.10",
                                "($5)",
                                "1,000",
                                "1,000.50",
                                "12:30",
                                "12:30 pm",
                                "2026-08-14",
                                "8/14/26",
                                "14. August 2026",
                                "Aug 14, 2026",
                                "Fri, 14 Aug 2026",
                                "2026-08-14T10:00",
                                "1 1/2",
                                "1.2.3",
                                "- 5",
                                "--5",
                                "A1"});
}

TEST(Typing, IsLogicalForTrueAndFalse) {
    expectAll(Typing::logical, {"TRUE", "true", "True", "FALSE", "false"});
}

TEST(Typing, IsLiteralBehindAnApostrophe) {
    expectAll(Typing::literal, {"'", "'007", "'=1+1", "'true", "''"});
}

} // namespace bridge::office
