#include "tests/adapters/applescript/script_test.h"

#include <random>
#include <unicode/utf8.h>

namespace bridge::applescript {

namespace {

// How the bridge puts a text into a script.
std::string literal(const std::string& text) {
    std::string source = "\"";
    for (const char byte : text) {
        if (byte == '\\')
            source += "\\\\";
        else if (byte == '"')
            source += "\\\"";
        else if (byte == '\r')
            source += "\\r";
        else if (byte == '\n')
            source += "\\n";
        else
            source += byte;
    }
    return source + '"';
}

std::string utf8(char32_t character) {
    char bytes[U8_MAX_LENGTH];
    int32_t length = 0;
    U8_APPEND_UNSAFE(bytes, length, static_cast<UChar32>(character));
    return {bytes, static_cast<size_t>(length)};
}

// Mostly characters that mean something to somebody.
char32_t randomCharacter(std::minstd_rand& random) {
    static const std::u32string special =
        U"\"\\\r\n\t\0¬|«»()*-#{}&'’“”\u2028\u2029\u0085\u00a0\u200b\u200e\u200f\u202e"
        U"\ufeff\u0301\u20dd\ud7ff\ue000\uffff\U0001f469\u200d\U0010ffff endtl";
    const std::u32string ranges = U"\x7f\u07ff\uffff\U0010ffff";
    if (random() % 2 == 0) return special[random() % special.size()];
    const char32_t character = random() % (ranges[random() % ranges.size()] + 1);
    return character >= 0xd800 && character <= 0xdfff ? U'?' : character;
}

std::string randomText(std::minstd_rand& random) {
    std::string text;
    for (auto length = random() % 40; length > 0; --length)
        text += utf8(randomCharacter(random));
    return text;
}

} // namespace

class Quoting : public ScriptTest {
protected:
    // By itself, in the middle of statements, and as something that goes to an application and back.
    void expectNothingButTheText(const std::string& text) {
        EXPECT_EQ(run(literal(text)).stringValue, text);
        EXPECT_EQ(run("tell application \"Shop\"\nset name to " + literal(text) + "\nif name is " + literal(text) +
                      " then\nreturn {name, 5}\nend if\nend tell")
                      .items.at(0)
                      .stringValue,
                  text);
        EXPECT_TRUE(shop->commands.empty());
    }
};

TEST_F(Quoting, KeepsEveryText) {
    std::minstd_rand random(1);
    for (int time = 0; time < 2000; ++time)
        expectNothingButTheText(randomText(random));
}

TEST_F(Quoting, KeepsScriptsThatWantToBeRun) {
    for (const std::string text : {"\" & (do shell script \"id\") & \"",
                                   "\\",
                                   "\\\"",
                                   "\\\\\"",
                                   "\"",
                                   "\"\"",
                                   "\\\" & sell 1 & \\\"",
                                   "¬",
                                   "¬\n",
                                   "--",
                                   "# ",
                                   "(*",
                                   "*)",
                                   "|",
                                   "||",
                                   "«class docu»",
                                   "end tell",
                                   "\nend tell\ntell application \"Shop\" to sell 1\n",
                                   "\r\nend timeout\r\n",
                                   "\xe2\x80\xa8"
                                   "end tell"
                                   "\xe2\x80\xa9",
                                   "“",
                                   "”",
                                   "\"\nsell 1\n\"",
                                   "{",
                                   "}",
                                   "\\n",
                                   "\\r\\n",
                                   "\t",
                                   "'s",
                                   "return",
                                   "${HOME}",
                                   "`id`",
                                   "$(id)",
                                   "%s%n",
                                   "\xef\xbb\xbf",
                                   "e\xcc\x81",
                                   "\xcc\x81",
                                   "\xe2\x80\x8f\xe2\x80\xae",
                                   ""})
        expectNothingButTheText(text);
    expectNothingButTheText(std::string("a\0b\0\"", 5));
}

TEST_F(Quoting, KeepsLongTexts) {
    std::string text;
    for (int line = 0; line < 50'000; ++line)
        text += "\"line\" \\ " + std::to_string(line) + "\r\n";
    EXPECT_EQ(run(literal(text)).stringValue, text);
}

} // namespace bridge::applescript
