#include "base/json_value.h"
#include "base/json_writer.h"
#include "tests/support/public_data.h"

#include <cmath>
#include <limits>

namespace bridge {
namespace {

JSONValue number(double value) {
    return {value};
}
JSONValue text(const char* value) {
    return {std::string(value)};
}

TEST(JSONReading, KeepsTheSixKinds) {
    const auto value = parseJSON(R"( {"a": [null, true, false, -1.5e2, "x\u00e9\ud83d\ude00"], "b": {}} )");
    const auto& array = *value.object()->at("a").array();
    EXPECT_TRUE(array[0].isNull());
    EXPECT_EQ(*array[1].boolean(), true);
    EXPECT_EQ(*array[2].boolean(), false);
    EXPECT_EQ(*array[3].number(), -150);
    EXPECT_EQ(*array[4].string(), "xé😀");
    EXPECT_TRUE(value.object()->at("b").object()->empty());
}

TEST(JSONReading, TakesScalarsAtTheTop) {
    EXPECT_EQ(parseJSON("5"), number(5));
    EXPECT_EQ(parseJSON(" \"a\" "), text("a"));
    EXPECT_TRUE(parseJSON("null").isNull());
    EXPECT_EQ(*parseJSON("true").boolean(), true);
}

TEST(JSONReading, RefusesWhatIsNotOneWholeValue) {
    for (const char* bad : {"",
                            " ",
                            "{",
                            "[1,",
                            "[1,]",
                            "{\"a\":1,}",
                            "{\"a\" 1}",
                            "{a:1}",
                            "[1 2]",
                            "1 2",
                            "[] []",
                            "{} x",
                            "tru",
                            "truee",
                            "falsex",
                            " falsex",
                            "false1",
                            "truex",
                            "nullx",
                            "nul",
                            "nulll",
                            "01",
                            "1.",
                            ".5",
                            "+1",
                            "-",
                            "1e",
                            "NaN",
                            "Infinity",
                            "'a'",
                            "\"a",
                            "\"\x01\"",
                            "\"\\x\"",
                            "\"\\u12\"",
                            "[\"a\"",
                            "\"a\" \"b\"",
                            "{\"a\":1}}",
                            "[1]]",
                            "/*c*/1",
                            "\"a\\\"",
                            "\xEF\xBB\xBF{}"})
        EXPECT_THROW(parseJSON(bad), JSONError) << bad;
}

TEST(JSONReading, RefusesTextThatIsNotUnicode) {
    EXPECT_THROW(parseJSON("\"\xff\""), JSONError);
    EXPECT_THROW(parseJSON("\"\xc0\xaf\""), JSONError);
    EXPECT_THROW(parseJSON(R"("\ud800")"), JSONError);
    EXPECT_THROW(parseJSON(R"("\udc00\ud800")"), JSONError);
}

TEST(JSONReading, TakesNumbersThatFitADoubleAndNoOthers) {
    EXPECT_EQ(parseJSON("123456789012345678901234567890"), number(123456789012345678901234567890.0));
    EXPECT_EQ(parseJSON("-9223372036854775808"), number(-9223372036854775808.0));
    EXPECT_EQ(parseJSON("1e-400"), number(0));
    EXPECT_EQ(parseJSON("1e-0000000000000000007"), number(1e-7));
    EXPECT_THROW(parseJSON("1e-00000000000000000007"), JSONError);
    EXPECT_THROW(parseJSON("1e400"), JSONError);
    EXPECT_THROW(parseJSON("[-1e400]"), JSONError);
    EXPECT_THROW(parseJSON(std::string(400, '9')), JSONError);
}

TEST(JSONReading, LastOfTwoEqualNamesCounts) {
    EXPECT_EQ(writeJSON(parseJSON(R"({"a":[1,2],"b":0,"a":{"c":3}})")), R"({"a":{"c":3},"b":0})");
}

TEST(JSONReading, DepthIsBoundedWithoutRecursion) {
    const auto nested = [](size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); };
    EXPECT_NO_THROW(parseJSON(nested(maximumJSONDepth)));
    EXPECT_THROW(parseJSON(nested(maximumJSONDepth + 1)), JSONError);
    EXPECT_THROW(parseJSON(nested(100'000)), JSONError);
    EXPECT_THROW(parseJSON(std::string(100'000, '[')), JSONError);
    std::string objects;
    for (int depth = 0; depth < 100'000; ++depth)
        objects += "{\"a\":";
    EXPECT_THROW(parseJSON(objects), JSONError);
}

TEST(JSONWriting, IsCompactSortedAndShort) {
    EXPECT_EQ(writeJSON(parseJSON(R"({ "b" : 5.0, "a" : [ 0.1, 1e21, -0.0, 100 ], "B" : null, "é":"" })")),
              R"({"B":null,"a":[0.1,1e+21,-0,100],"b":5,"é":""})");
}

TEST(JSONWriting, WholeNumbersHaveNoExponentWhileADoubleCountsThem) {
    EXPECT_EQ(writeJSON({500000.0}), "500000");
    EXPECT_EQ(writeJSON({-900.0}), "-900");
    EXPECT_EQ(writeJSON({9007199254740992.0}), "9007199254740992");
    EXPECT_EQ(writeJSON({0.0}), "0");
    EXPECT_EQ(writeJSON({-0.0}), "-0");
    EXPECT_EQ(writeJSON({1e18}), "1e+18");
    EXPECT_EQ(writeJSON({0.00001}), "1e-05");
}

TEST(JSONWriting, NamesThatAreNotUTF8AreRepairedToo) {
    EXPECT_EQ(writeJSON({JSONValue::Object{{"a\xff", JSONValue{1.0}}}}), "{\"a\xEF\xBF\xBD\":1}");
}

TEST(JSONWriting, EscapesOnlyWhatMustBe) {
    EXPECT_EQ(writeJSON({std::string("\"\\/\b\f\n\r\t\x01\x1f\x7f é", 14)}),
              "\"\\\"\\\\/\\b\\f\\n\\r\\t\\u0001\\u001f\x7f é\"");
    EXPECT_EQ(writeJSON({std::string("a\0b", 3)}), "\"a\\u0000b\"");
}

TEST(JSONWriting, BytesThatAreNotUTF8BecomeReplacementCharacters) {
    EXPECT_EQ(writeJSON({std::string("a\xff\xfe z")}), "\"a\xEF\xBF\xBD\xEF\xBF\xBD z\"");
}

TEST(JSONWriting, RefusesNumbersThatJSONLacks) {
    EXPECT_THROW(writeJSON({std::numeric_limits<double>::infinity()}), JSONError);
    EXPECT_THROW(writeJSON({std::nan("")}), JSONError);
}

TEST(JSONWriting, ReadsBackAsItWas) {
    for (const double value : {0.1, 1e-7, 123456.789, 5e-324, 1.7976931348623157e308, 9007199254740993.0})
        EXPECT_EQ(parseJSON(writeJSON({value})), number(value));
}

TEST(PublicJSONSuite, AcceptsEveryValidTextAndRefusesEveryInvalidOne) {
    REQUIRE_PUBLIC_DATA("json");
    size_t seen = 0;
    for (const auto& entry : std::filesystem::directory_iterator(publicData("json"))) {
        const auto name = entry.path().filename().string();
        const auto content = readFile(entry.path());
        bool accepted = true;
        try {
            const auto value = parseJSON(content);
            EXPECT_EQ(parseJSON(writeJSON(value)), value) << name;
        } catch (const JSONError&) {
            accepted = false;
        }
        EXPECT_TRUE(accepted || !name.starts_with("y_")) << name;
        EXPECT_TRUE(!accepted || !name.starts_with("n_")) << name;
        ++seen;
    }
    EXPECT_GT(seen, 300u);
}

} // namespace
} // namespace bridge
