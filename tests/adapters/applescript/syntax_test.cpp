#include "tests/adapters/applescript/script_test.h"

namespace bridge::applescript {

using Syntax = ScriptTest;

TEST_F(Syntax, ErrorsNameTheLineAndWhatWasExpected) {
    EXPECT_EQ(errorText("set x to 1\nset y 2"), "Line 2: Expected “to” but found “2”.");
    EXPECT_EQ(errorText("if true then\n1"), "Line 2: Expected “end” but found end of script.");
    EXPECT_EQ(errorText("repeat 3 times\nend if"), "Line 2: Expected “end repeat” but found “if”.");
    EXPECT_EQ(errorText("1 +"), "Line 1: Expected expression but found end of script.");
    EXPECT_EQ(errorText("set x to {1, 2\n3"), "Line 1: Expected “}” but found end of line.");
    EXPECT_EQ(errorText("(1"), "Line 1: Expected “)” but found end of script.");
    EXPECT_EQ(errorText("1 2"), "Line 1: Expected end of line but found “2”.");
    EXPECT_EQ(errorText("\n\nend tell"), "Line 3: Expected end of line but found “tell”.");
    EXPECT_EQ(errorText("3 as frobnicator"), "Line 1: Expected class name but found “frobnicator”.");
    EXPECT_EQ(errorText("a b \"c\""), "Line 1: Expected end of line but found “b”.");
    EXPECT_EQ(errorText("set 3 to x"), "Line 1: Expected variable or property before this but found “to”.");
    EXPECT_EQ(errorNumber("considering diacriticals\nend"), -2741);
    EXPECT_EQ(errorNumber("do shell script \"id\""), -2741);
}

TEST_F(Syntax, NothingRunsBeforeAllIsRead) {
    EXPECT_EQ(errorNumber("tell application \"Shop\" to wait\nset"), -2741);
    EXPECT_THAT(shop->commands, testing::IsEmpty());
}

TEST_F(Syntax, RefusesAnApplicationThatIsNotThere) {
    EXPECT_EQ(errorNumber("tell application \"Finder\" to activate"), -1728);
    EXPECT_EQ(errorText("tell application \"Finder\" to activate"), "Can’t get application \"Finder\".");
    EXPECT_EQ(errorNumber("tell application \"System Events\"\nend tell"), -1728);
}

TEST_F(Syntax, RefusesWhatIsNoScript) {
    EXPECT_THROW(run("\"\xff\""), NoScriptError);
    EXPECT_THROW(run(std::string((64 << 20) + 1, ' ')), NoScriptError);
}

TEST_F(Syntax, EndsWhatIsNestedTooDeep) {
    const auto many = [](const std::string& part) {
        std::string all;
        for (int time = 0; time < 5'000; ++time)
            all += part;
        return all;
    };
    for (const auto* part : {"(",      "{",    "not ",           "- ",       "x of ", "tell it to ", "if true then ",
                             "f(",     "{a:",  "every item of ", "repeat\n", "try\n", "a & (",       "end of ",
                             "count ", "get ", "item 1 of ",     "word (",   "its ",  "close "})
        EXPECT_EQ(errorNumber(many(part) + "1"), -2706) << part;
    EXPECT_EQ(errorNumber("1" + many("'s x")), -2706);
    EXPECT_EQ(errorNumber(many("x ")), -2741);
    EXPECT_EQ(errorNumber("1" + many(" as text") + many(" is 1")), 1);
}

TEST_F(Syntax, TakesNoMoreThanAScriptCanHave) {
    std::string source(1'100'000, '\n');
    EXPECT_EQ(errorNumber(source), -108);
}

TEST_F(Syntax, TakesLongRunsOfOperators) {
    std::string source = "0";
    for (int time = 0; time < 20'000; ++time)
        source += " + 1";
    EXPECT_EQ(text(source), "20000");
}

} // namespace bridge::applescript
