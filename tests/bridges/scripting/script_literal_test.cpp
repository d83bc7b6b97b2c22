#include "base/text.h"
#include "bridges/scripting/script_literal.h"

#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace bridge {
namespace {

TEST(ScriptLiteral, StandsInQuotationMarks) {
    EXPECT_EQ(scriptLiteral(""), "\"\"");
    EXPECT_EQ(scriptLiteral("abc"), "\"abc\"");
    EXPECT_EQ(scriptLiteral("Grüße, 日本語 👩‍👧"), "\"Grüße, 日本語 👩‍👧\"");
}

TEST(ScriptLiteral, EscapesQuotationMarksBackslashesAndLineBreaks) {
    EXPECT_EQ(scriptLiteral("a\"b\\c\n"), R"("a\"b\\c\n")");
    EXPECT_EQ(scriptLiteral("\r\n"), R"("\r\n")");
    EXPECT_EQ(scriptLiteral("\""), R"("\"")");
    EXPECT_EQ(scriptLiteral("\\"), R"("\\")");
}

TEST(ScriptLiteral, DoublesEachBackslashOnce) {
    EXPECT_EQ(scriptLiteral(R"(\n)"), R"("\\n")");
    EXPECT_EQ(scriptLiteral(R"(\")"), R"("\\\"")");
    EXPECT_EQ(scriptLiteral(R"(\\)"), R"("\\\\")");
    EXPECT_EQ(scriptLiteral("\\\n"), R"("\\\n")");
}

TEST(ScriptLiteral, LeavesEverythingElseAsItIs) {
    EXPECT_EQ(scriptLiteral("\t' ` $ ¬ “ ” \u2028 \u00a0 --(**)"), "\"\t' ` $ ¬ “ ” \u2028 \u00a0 --(**)\"");
    EXPECT_EQ(scriptLiteral(std::string("a\0b\x01", 4)), std::string("\"a\0b\x01\"", 6));
}

TEST(ScriptLiteral, IsAddedToAScript) {
    std::string script = "set x to ";
    appendScriptLiteral(script, "\"");
    EXPECT_EQ(script, R"(set x to "\"")");
}

// Reads a literal as the language does, to its closing quotation mark, which must be the last character.
std::optional<std::string> read(std::string_view literal) {
    if (literal.empty() || literal.front() != '"') return std::nullopt;
    std::string text;
    for (size_t index = 1; index < literal.size(); ++index) {
        const char character = literal[index];
        if (character == '"') return index + 1 == literal.size() ? std::optional(text) : std::nullopt;
        if (character == '\r' || character == '\n') return std::nullopt;
        if (character != '\\') {
            text += character;
            continue;
        }
        if (++index == literal.size()) return std::nullopt;
        switch (literal[index]) {
        case '"':
            text += '"';
            break;
        case '\\':
            text += '\\';
            break;
        case 'n':
            text += '\n';
            break;
        case 'r':
            text += '\r';
            break;
        default:
            return std::nullopt;
        }
    }
    return std::nullopt;
}

void appendUTF8(std::string& text, char32_t character) {
    const auto byte = [&](char32_t value) { text += static_cast<char>(value); };
    if (character < 0x80) return byte(character);
    if (character < 0x800) {
        byte(0xc0 | character >> 6);
    } else if (character < 0x10000) {
        byte(0xe0 | character >> 12);
        byte(0x80 | (character >> 6 & 0x3f));
    } else {
        byte(0xf0 | character >> 18);
        byte(0x80 | (character >> 12 & 0x3f));
        byte(0x80 | (character >> 6 & 0x3f));
    }
    byte(0x80 | (character & 0x3f));
}

// Every second character one of those that count.
std::string randomText(std::mt19937& random) {
    constexpr std::u32string_view remarkable = U"\\\"\n\rnrt'\t\0¬“”";
    std::string text;
    for (size_t left = random() % 40; left > 0; --left) {
        char32_t character = random() % 0x110000;
        if (character >= 0xd800 && character < 0xe000) character = 'x';
        if (random() % 2 == 0) character = remarkable[random() % remarkable.size()];
        appendUTF8(text, character);
    }
    return text;
}

TEST(ScriptLiteral, IsReadBackAsTheSameText) {
    std::mt19937 random(20'260'814);
    for (int round = 0; round < 50'000; ++round) {
        const auto text = randomText(random);
        ASSERT_TRUE(isUTF8(text));
        ASSERT_EQ(read(scriptLiteral(text)), text);
    }
}

TEST(ScriptLiteral, OfBytesThatAreNoTextIsReadBackToo) {
    std::mt19937 random(7);
    for (int round = 0; round < 10'000; ++round) {
        std::string bytes(random() % 30, '\0');
        for (auto& byte : bytes)
            byte = static_cast<char>(random());
        ASSERT_EQ(read(scriptLiteral(bytes)), bytes);
    }
}

} // namespace
} // namespace bridge
