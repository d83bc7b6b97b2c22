#include "tests/adapters/applescript/script_test.h"

namespace bridge::applescript {

using Language = ScriptTest;

TEST_F(Language, GivesTheLastStatementsResult) {
    EXPECT_EQ(text("1 + 1\n\"a\" & \"b\""), "ab");
    EXPECT_EQ(text("set x to 3"), "3");
    EXPECT_EQ(text("5\nset y to result * 2"), "10");
    EXPECT_TRUE(run("").isNull);
}

TEST_F(Language, ReturnsWhatTheScriptReturns) {
    EXPECT_EQ(text("return 1\n2"), "1");
    EXPECT_TRUE(run("3\nreturn").isNull);
    EXPECT_TRUE(run("return null").isNull);
    EXPECT_FALSE(run("return missing value").isNull);
    EXPECT_EQ(run("return missing value").stringValue, std::nullopt);
}

TEST_F(Language, CalculatesWithPrecedence) {
    EXPECT_EQ(text("1 + 2 * 3 - 4"), "3");
    EXPECT_EQ(text("(1 + 2) * 3"), "9");
    EXPECT_EQ(text("2 ^ 3 * 2"), "16");
    EXPECT_EQ(text("7 div 2 + 7 mod 2"), "4");
    EXPECT_EQ(text("-7 mod 3"), "-1");
    EXPECT_EQ(text("7 / 2"), "3.5");
    EXPECT_EQ(text("6 / 2"), "3");
    EXPECT_EQ(text("\"3\" + 4"), "7");
    EXPECT_EQ(text("-(2 + 3)"), "-5");
    EXPECT_EQ(text("1.5 div 0.5"), "3");
}

TEST_F(Language, LetsIntegersOverflowToReals) {
    EXPECT_EQ(run("9223372036854775807 + 1").doubleValue, 9223372036854775808.0);
    EXPECT_EQ(text("class of (9223372036854775807 + 1)"), "real");
    EXPECT_EQ(errorNumber("10 ^ 300 * 10 ^ 300"), -2702);
    EXPECT_EQ(errorNumber("1 / 0"), -2701);
    EXPECT_EQ(errorNumber("1 mod 0.0"), -2701);
    EXPECT_EQ(errorText("5 div 0"), "Can’t divide 5 by zero.");
}

TEST_F(Language, WritesNumbers) {
    EXPECT_EQ(text("(6 / 2) as text"), "3.0");
    EXPECT_EQ(text("0.25 as text"), "0.25");
    EXPECT_EQ(text("1.0e+20 as text"), "1.0E+20");
    EXPECT_EQ(text("1.5"), "1.5");
    EXPECT_EQ(text("3.0"), "3");
    EXPECT_EQ(text("pi as integer"), "3");
}

TEST_F(Language, ComparesInWordsAndSigns) {
    for (const auto* holds : {"1 = 1",
                              "1 is 1",
                              "1 equals 1",
                              "1 is equal to 1.0",
                              "1 is not 2",
                              "1 isn't 2",
                              "1 ≠ 2",
                              "1 /= 2",
                              "1 is not equal to 2",
                              "1 doesn't equal 2",
                              "1 < 2",
                              "1 is less than 2",
                              "2 is greater than 1",
                              "1 ≤ 1",
                              "1 <= 1",
                              "1 is less than or equal to 1",
                              "1 is not greater than 1",
                              "2 ≥ 1",
                              "2 comes after 1",
                              "\"a\" comes before \"b\"",
                              "\"a\" does not come after \"a\"",
                              "2 is greater than or equal to 1",
                              "1 is not less than 1",
                              "3 < \"20\"",
                              "\"a\" is \"A\"",
                              "\"é\" is not \"e\"",
                              "{1, \"b\"} = {1.0, \"B\"}",
                              "{a:1, b:2} = {b:2, a:1}",
                              "missing value is missing value",
                              "\"1\" is not 1",
                              "class of 1 is integer"})
        EXPECT_EQ(text(holds), "true") << holds;
    EXPECT_EQ(errorNumber("true < 1"), -1700);
}

TEST_F(Language, LooksIntoTextsAndLists) {
    for (const auto* holds :
         {"\"Hello\" contains \"ELL\"", "\"Hello\" begins with \"he\"", "\"Hello\" starts with \"H\"",
          "\"Hello\" ends with \"LO\"", "\"ell\" is in \"Hello\"", "\"x\" is not in \"Hello\"",
          "\"ell\" is contained by \"Hello\"", "\"Hello\" does not contain \"x\"", "\"Hello\" doesn't start with \"x\"",
          "{1, 2, 3} contains 2", "{1, 2, 3} contains {2, 3}", "{1, 2, 3} begins with 1", "{1, 2, 3} ends with {2, 3}",
          "2 is in {1, 2}", "{a:1, b:2} contains {b:2}", "{1, 2} does not contain {1, 3}", "{1} contains {}"})
        EXPECT_EQ(text(holds), "true") << holds;
}

TEST_F(Language, KnowsAndOrNot) {
    EXPECT_EQ(text("not false and true"), "true");
    EXPECT_EQ(text("false and (1 / 0 = 1)"), "false");
    EXPECT_EQ(text("true or (1 / 0 = 1)"), "true");
    EXPECT_EQ(text("false and true or true"), "true");
    EXPECT_EQ(text("not 1 = 2"), "true");
    EXPECT_EQ(errorNumber("\"perhaps\" and true"), -1700);
}

TEST_F(Language, ConsidersCaseWhereAsked) {
    EXPECT_EQ(text("considering case\nreturn \"a\" is \"A\"\nend considering"), "false");
    EXPECT_EQ(text("considering case\nignoring case\nreturn \"a\" is \"A\"\nend ignoring\nend"), "true");
    EXPECT_EQ(text("considering case\nend considering\n\"a\" is \"A\""), "true");
}

TEST_F(Language, Concatenates) {
    EXPECT_EQ(text("\"a\" & 1 & true"), "a1true");
    EXPECT_EQ(text("{1} & 2 & {3, 4}"), "{1, 2, 3, 4}");
    EXPECT_EQ(text("b of ({a:1} & {b:2})"), "2");
    EXPECT_EQ(text("1 & \"a\""), "{1, a}");
    EXPECT_EQ(text("\"a\" & return & linefeed & tab & quote & space"), "a\r\n\t\" ");
    EXPECT_EQ(text("\"a\" & 1 as text"), "a1");
}

TEST_F(Language, Coerces) {
    EXPECT_EQ(text("\"12\" as integer"), "12");
    EXPECT_EQ(text("(\"12.5\" as number) + 1"), "13.5");
    EXPECT_EQ(text("class of (\"12\" as real)"), "real");
    EXPECT_EQ(text("\"true\" as boolean"), "true");
    EXPECT_EQ(text("true as integer"), "1");
    EXPECT_EQ(text("{1, \"a\", {2}} as text"), "1a2");
    EXPECT_EQ(text("{7} as integer"), "7");
    EXPECT_EQ(text("5 as list"), "{5}");
    EXPECT_EQ(text("{a:1, b:2} as list"), "{1, 2}");
    EXPECT_EQ(text("missing value as string"), "missing value");
    EXPECT_EQ(errorText("\"abc\" as integer"), "Can’t make \"abc\" into type integer.");
    EXPECT_EQ(errorNumber("{a:1} as text"), -1700);
    EXPECT_EQ(errorNumber("\"inf\" as real"), -1700);
    EXPECT_EQ(errorNumber("1e300 as integer"), -1700);
}

TEST_F(Language, DecidesOnOneLineAndOnMany) {
    const std::string block = "if x < 0 then\nreturn \"less\"\nelse if x = 0 then\nreturn \"none\"\nelse\nreturn "
                              "\"more\"\nend if";
    EXPECT_EQ(text("set x to -1\n" + block), "less");
    EXPECT_EQ(text("set x to 0\n" + block), "none");
    EXPECT_EQ(text("set x to 1\n" + block), "more");
    EXPECT_EQ(text("if false then return 1\nreturn 2"), "2");
    EXPECT_EQ(text("if false then return 1 else return 3"), "3");
    EXPECT_EQ(text("if 1 = 1 then\nend if\n4"), "4");
}

TEST_F(Language, Repeats) {
    EXPECT_EQ(text("set n to 0\nrepeat 3 times\nset n to n + 1\nend repeat\nn"), "3");
    EXPECT_EQ(text("set n to 0\nrepeat\nset n to n + 1\nif n > 4 then exit repeat\nend repeat\nn"), "5");
    EXPECT_EQ(text("set n to 0\nrepeat while n < 4\nset n to n + 1\nend\nn"), "4");
    EXPECT_EQ(text("set n to 0\nrepeat until n = 6\nset n to n + 1\nend\nn"), "6");
    EXPECT_EQ(text("set l to {}\nrepeat with i from 1 to 3\nset end of l to i\nend\nl"), "{1, 2, 3}");
    EXPECT_EQ(text("set l to {}\nrepeat with i from 5 to 1 by -2\nset end of l to i\nend\nl"), "{5, 3, 1}");
    EXPECT_EQ(text("set l to {}\nrepeat with i from 0 to 1 by 0.5\nset end of l to i\nend\nl"), "{0, 0.5, 1}");
    EXPECT_EQ(text("set l to {}\nrepeat with x in {\"a\", \"b\"}\nset beginning of l to x\nend\nl"), "{b, a}");
    EXPECT_EQ(text("set l to {1, 2}\nrepeat with x in l\nset end of l to x\nend\ncount l"), "4");
    EXPECT_EQ(text("repeat with i from 1 to 9223372036854775807 by 9223372036854775806\nend\ni"),
              "9223372036854775807");
    EXPECT_EQ(text("repeat with x in {1, 2, 3}\nrepeat 2 times\nreturn x\nend\nend"), "1");
}

TEST_F(Language, CatchesErrors) {
    EXPECT_EQ(text("try\nerror \"Oh\" number 42\non error m number n\nreturn {m, n}\nend try"), "{Oh, 42}");
    EXPECT_EQ(text("try\nerror \"Oh\"\non error m\nreturn m\nend try"), "Oh");
    EXPECT_EQ(text("try\nerror number -128\non error number n\nreturn n\nend try"), "-128");
    EXPECT_EQ(text("try\n1 / 0\nend try\n7"), "7");
    EXPECT_EQ(text("try\nerror \"x\" number 5 from 3 partial result {} to text\non error m number n from f partial "
                   "result p to t\nreturn n\nend"),
              "5");
    EXPECT_EQ(text("try\ntry\nerror number 3\non error number 4\nreturn \"no\"\nend try\non error number 3\nreturn "
                   "\"yes\"\nend try"),
              "yes");
    EXPECT_EQ(text("try\ntry\nerror \"a\" number 1\non error m number n\nerror m & \"b\" number n + 1\nend try\non "
                   "error m number n\nreturn m & n\nend"),
              "ab2");
}

TEST_F(Language, EndsWithTheErrorThatNobodyCaught) {
    EXPECT_EQ(errorNumber("error \"Gone\" number -1728"), -1728);
    EXPECT_EQ(errorText("error \"Gone\" number -1728"), "Gone");
    EXPECT_EQ(errorNumber("error \"Gone\""), -2700);
    EXPECT_EQ(errorText("x"), "The variable x is not defined.");
    EXPECT_EQ(errorText("return FooBar + 1"), "The variable FooBar is not defined.");
    EXPECT_EQ(errorNumber("x"), -2753);
    EXPECT_EQ(errorNumber("f(1)"), -1708);
    EXPECT_EQ(errorNumber("close 3"), -1708);
    EXPECT_EQ(errorNumber("result"), -2753);
}

TEST_F(Language, SetsAndCopies) {
    EXPECT_EQ(text("set {a, {b, c}} to {1, {2, 3}}\na + b + c"), "6");
    EXPECT_EQ(text("copy 5 to x\nx"), "5");
    EXPECT_EQ(text("set |to be| to 2\n|To Be|"), "2");
    EXPECT_EQ(text("set r to {a:1}\nset a of r to 2\nset r's b to 3\n(a of r) + (r's b)"), "5");
    EXPECT_EQ(text("set l to {1, 2, 3}\nset item 2 of l to \"x\"\nset last item of l to \"y\"\nl"), "{1, x, y}");
    EXPECT_EQ(errorNumber("set {a, b} to {1}"), -1728);
    EXPECT_EQ(errorNumber("set length of \"abc\" to 3"), -10006);
    EXPECT_EQ(errorNumber("set item 5 of {1} to 3"), -1728);
}

TEST_F(Language, SharesLists) {
    EXPECT_EQ(text("set l to {1}\nset m to l\nset end of m to 2\nl"), "{1, 2}");
}

TEST_F(Language, TakesListsApart) {
    EXPECT_EQ(text("item 2 of {1, 2, 3}"), "2");
    EXPECT_EQ(text("item -1 of {1, 2, 3}"), "3");
    EXPECT_EQ(text("set l to {1, 2, 3}\n{first item of l, third item of l, last item of l, middle item of l}"),
              "{1, 3, 3, 2}");
    EXPECT_EQ(text("items 2 thru 3 of {1, 2, 3}"), "{2, 3}");
    EXPECT_EQ(text("items -2 thru -1 of {1, 2, 3}"), "{2, 3}");
    EXPECT_EQ(text("rest of {1, 2, 3}"), "{2, 3}");
    EXPECT_EQ(text("reverse of {1, 2, 3}"), "{3, 2, 1}");
    EXPECT_EQ(text("length of {1, 2, 3}"), "3");
    EXPECT_EQ(text("{1, 2}'s length"), "2");
    EXPECT_EQ(text("count {1, 2, 3}"), "3");
    EXPECT_EQ(text("count of items of {1, 2, 3}"), "3");
    EXPECT_EQ(text("count each integer of {1, \"a\", 3}"), "2");
    EXPECT_EQ(text("number of items in {1, 2}"), "2");
    EXPECT_EQ(text("every text of {1, \"a\", 3}"), "{a}");
    EXPECT_EQ(text("integers of {1, \"a\", 3}"), "{1, 3}");
    EXPECT_EQ(text("every number of {1, \"a\", 3} whose it > 2"), "{3}");
    EXPECT_EQ(text("some item of {4}"), "4");
    EXPECT_EQ(text("end of {1, 2}"), "2");
    EXPECT_EQ(errorText("item 4 of {1, 2, 3}"), "Can’t get item 4 of {1, 2, 3}.");
    EXPECT_EQ(errorNumber("item 0 of {1}"), -1728);
    EXPECT_EQ(errorText("foo of {a:1}"), "Can’t get foo of {a:1}.");
}

TEST_F(Language, TakesTextsApart) {
    EXPECT_EQ(text("length of \"héllo👩‍👩‍👧\""), "6");
    EXPECT_EQ(text("characters of \"añ👍🏽\""), "{a, ñ, 👍🏽}");
    EXPECT_EQ(text("character 2 of \"añb\""), "ñ");
    EXPECT_EQ(text("last character of \"abc\""), "c");
    EXPECT_EQ(text("text 2 thru 3 of \"héllo\""), "él");
    EXPECT_EQ(text("text 2 thru -1 of \"hello\""), "ello");
    EXPECT_EQ(text("characters 1 thru 2 of \"hello\""), "{h, e}");
    EXPECT_EQ(text("words of \"Hello, world! 3.5\""), "{Hello, world, 3.5}");
    EXPECT_EQ(text("word 2 of \"Hello, world!\""), "world");
    EXPECT_EQ(text("paragraphs of \"a\\nb\\r\\nc\\r\""), "{a, b, c, }");
    EXPECT_EQ(text("count of words of \"a b c\""), "3");
    EXPECT_EQ(text("count \"añb\""), "3");
    EXPECT_EQ(text("reverse of characters of \"abc\" as text"), "cba");
    EXPECT_EQ(text("set l to {}\nrepeat with c in \"ab\"\nset end of l to c\nend\nl"), "{a, b}");
    EXPECT_EQ(errorNumber("word 3 of \"a b\""), -1728);
    EXPECT_EQ(errorNumber("character 1 of \"\""), -1728);
}

TEST_F(Language, CallsHandlers) {
    EXPECT_EQ(text("on double(x)\nreturn x * 2\nend double\ndouble(double(3))"), "12");
    EXPECT_EQ(text("to add(a, b)\na + b\nend\nmy add(1, 2)"), "3");
    EXPECT_EQ(text("on fact(n)\nif n < 2 then return 1\nreturn n * (fact(n - 1))\nend fact\nfact(10)"), "3628800");
    EXPECT_EQ(text("set x to 1\non f()\nset x to 2\nend f\nf()\nx"), "1");
    EXPECT_EQ(text("property x : 1\non f()\nset x to x + 1\nend f\nf()\nf()\nx"), "3");
    EXPECT_EQ(text("global y\nset y to 1\non f()\nglobal y\nset y to 5\nend f\nf()\ny"), "5");
    EXPECT_EQ(text("on run\nreturn \"ran\"\nend run"), "ran");
    EXPECT_EQ(text("tell application \"Shop\"\nreturn my f()\nend tell\non f()\nreturn 9\nend f"), "9");
    EXPECT_EQ(errorNumber("on f(a)\nend f\nf()"), -1708);
    EXPECT_EQ(errorNumber("on f()\nend f\nset x to f()"), -2763);
    EXPECT_EQ(errorNumber("on f()\nreturn y\nend f\nset y to 1\nf()"), -2753);
}

TEST_F(Language, ReadsResultsInEveryWay) {
    EXPECT_EQ(run("\"12.5\"").doubleValue, 12.5);
    EXPECT_EQ(run("\"12.5\"").intValue, 13);
    EXPECT_EQ(run("true").doubleValue, 1);
    EXPECT_EQ(run("5000000000").intValue, 2147483647);
    EXPECT_EQ(run("5000000000").doubleValue, 5e9);
    EXPECT_EQ(run("-1e20").intValue, -2147483648);
    EXPECT_EQ(run("\"abc\"").doubleValue, 0);
    EXPECT_EQ(run("{a:1}").stringValue, std::nullopt);
    EXPECT_EQ(run("{}").stringValue, std::nullopt);
    EXPECT_EQ(run("{3}").intValue, 0);
    EXPECT_EQ(run("yes").stringValue, "yes");
    EXPECT_EQ(run("class of 3").stringValue, "integer");
    EXPECT_EQ(run("POSIX file \"/a/b\"").stringValue, "/a/b");
    EXPECT_EQ(run("POSIX path of (POSIX file \"/a/b\")").stringValue, "/a/b");
    EXPECT_EQ(run("application \"Shop\"").stringValue, "application \"Shop\"");
}

} // namespace bridge::applescript
