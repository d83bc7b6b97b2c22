#include "adapters/applescript/lexer.h"
#include "platform/script_engine.h"

#include <gmock/gmock.h>

namespace bridge::applescript {

namespace {

std::vector<std::string> texts(std::string_view source) {
    std::vector<std::string> all;
    for (const auto& token : Lexer(source).tokens()) {
        if (token.kind == TokenKind::lineEnd)
            all.emplace_back("\n");
        else if (token.kind == TokenKind::integer)
            all.push_back(std::to_string(token.integer));
        else if (token.kind != TokenKind::end)
            all.push_back(token.text);
    }
    return all;
}

std::string fault(std::string_view source) {
    try {
        Lexer(source).tokens();
    } catch (const ScriptError& error) {
        EXPECT_EQ(error.number(), ScriptError::syntaxError);
        return error.what();
    }
    return "none";
}

} // namespace

using testing::ElementsAre;

TEST(Lexer, ReadsWordsInLowerCase) {
    EXPECT_THAT(texts("Set fooBar TO Größe_2"), ElementsAre("set", "foobar", "to", "größe_2"));
}

TEST(Lexer, GivesSymbolsOneForm) {
    EXPECT_THAT(texts("≤ ≥ ≠ <= /= ÷ x's"), ElementsAre("<=", ">=", "/=", "<=", "/=", "/", "x", "'s"));
}

TEST(Lexer, ReadsEscapesInTexts) {
    EXPECT_THAT(texts(R"("a\"b\\c\n\r\t")"), ElementsAre("a\"b\\c\n\r\t"));
    EXPECT_EQ(fault(R"("a\d")"), "Line 1: Expected “\"” but found unknown token.");
    EXPECT_EQ(fault("\n\"abc"), "Line 2: Expected “\"” but found end of script.");
    EXPECT_EQ(fault("\"abc\\"), "Line 1: Expected “\"” but found unknown token.");
}

TEST(Lexer, KeepsLineEndsInTexts) {
    EXPECT_THAT(texts("\"a\r\nb\" 1"), ElementsAre("a\r\nb", "1"));
    EXPECT_EQ(Lexer("\"a\r\nb\" 1").tokens()[1].line, 2);
}

TEST(Lexer, SkipsComments) {
    EXPECT_THAT(texts("a -- b \" (*\nc # d\n(* e (* f *) \n g *) h"), ElementsAre("a", "\n", "c", "\n", "h"));
    EXPECT_EQ(fault("(* (* *)"), "Line 1: Expected “*)” but found end of script.");
}

TEST(Lexer, JoinsContinuedLines) {
    EXPECT_THAT(texts("a ¬ -- why\n  b"), ElementsAre("a", "b"));
    EXPECT_EQ(fault("a ¬ b"), "Line 1: Expected end of line after “¬”.");
}

TEST(Lexer, CountsLinesOfEveryKind) {
    const auto tokens = Lexer("a\rb\r\nc\nd ¬\ne").tokens();
    EXPECT_EQ(tokens[2].line, 2);
    EXPECT_EQ(tokens[4].line, 3);
    EXPECT_EQ(tokens[6].line, 4);
    EXPECT_EQ(tokens[7].line, 5);
}

TEST(Lexer, ReadsNumbers) {
    const auto tokens = Lexer("12 1.5 2e3 1.5E-2 9223372036854775808").tokens();
    EXPECT_EQ(tokens[0].integer, 12);
    EXPECT_EQ(tokens[1].real, 1.5);
    EXPECT_EQ(tokens[2].real, 2000);
    EXPECT_EQ(tokens[3].real, 0.015);
    EXPECT_EQ(tokens[4].real, 9223372036854775808.0);
    EXPECT_EQ(fault("1e999"), "Line 1: The number is too large.");
}

TEST(Lexer, TakesAnythingBetweenBarsForAName) {
    const auto tokens = Lexer("|end of Line|").tokens();
    EXPECT_EQ(tokens[0].kind, TokenKind::barredWord);
    EXPECT_EQ(tokens[0].text, "end of line");
    EXPECT_EQ(tokens[0].source, "end of Line");
}

TEST(Lexer, RefusesWhatIsNoLanguage) {
    EXPECT_EQ(fault("«class docu»"), "Line 1: Expected expression but found unknown token.");
    EXPECT_EQ(fault("a\n“b”"), "Line 2: Expected expression but found unknown token.");
    EXPECT_EQ(fault(std::string_view("a \0", 3)), "Line 1: Expected expression but found unknown token.");
}

} // namespace bridge::applescript
