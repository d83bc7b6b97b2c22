#include "adapters/libreoffice/storable_text.h"

#include "adapters/libreoffice/office.h"

#include <gtest/gtest.h>

namespace bridge::office {

TEST(StorableText, HasALineFeedForEveryLineBreak) {
    EXPECT_EQ(storableText("a\r\nb\rc\nd\r\r\n\n\r"), "a\nb\nc\nd\n\n\n\n");
    EXPECT_EQ(storableText(""), "");
}

TEST(StorableText, KeepsTabsAndEveryLetter) {
    const std::string text = "tab\there caf\u00e9 \U0001F98A \u05E9\u05DC \u202E \u0085 \u007f";
    EXPECT_EQ(storableText(text), text);
}

TEST(StorableText, IsUTF8WhateverItWas) {
    EXPECT_EQ(storableText("a\xff"), "a\uFFFD");
}

TEST(StorableText, HasNoControlCharacters) {
    for (int code = 0; code < 0x20; ++code) {
        if (code == '\t' || code == '\n' || code == '\r') continue;
        EXPECT_THROW(storableText(std::string("a") + static_cast<char>(code)), ScriptError) << code;
    }
    EXPECT_THROW(storableText("\xEF\xBF\xBE"), ScriptError);
    EXPECT_THROW(storableText("\xEF\xBF\xBF"), ScriptError);
}

TEST(StorableText, SaysWhichCharacterItCantHave) {
    try {
        storableText("a\x1b[0m");
        FAIL();
    } catch (const ScriptError& error) {
        EXPECT_EQ(error.message(), "The text has the control character U+001B, which documents can't store.");
    }
}

} // namespace bridge::office
