#include "bridges/calendar/item_title.h"

#include "base/apple_bridge_error.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

std::string refusal(const std::string& title, const char* label) {
    try {
        validTitle(title, label);
    } catch (const AppleBridgeError& error) {
        EXPECT_EQ(error.kind(), AppleBridgeError::Case::malformedRequest);
        return error.message();
    }
    return "";
}

std::string repeated(const std::string& text, int count) {
    std::string whole;
    for (int index = 0; index < count; ++index)
        whole += text;
    return whole;
}

TEST(ItemTitle, IsTrimmedAtItsEndsOnly) {
    EXPECT_EQ(validTitle("Sowing", "Reminder"), "Sowing");
    EXPECT_EQ(validTitle(" \t\r\n Buy\n milk\u2003\u00a0\u2028", "Reminder"), "Buy\n milk");
}

TEST(ItemTitle, IsNotEmpty) {
    for (const auto* empty : {"", " ", "\n\n", "\u3000\t"}) {
        EXPECT_EQ(refusal(empty, "Calendar event"), "Malformed bridge request: Calendar event title cannot be empty.");
        EXPECT_EQ(refusal(empty, "Reminder"), "Malformed bridge request: Reminder title cannot be empty.");
    }
}

TEST(ItemTitle, HasAtMostAThousandCharactersOnceTrimmed) {
    const std::string tooLong = "Malformed bridge request: Reminder list title cannot exceed 1,000 characters.";
    EXPECT_EQ(validTitle("  " + std::string(1000, 'x') + "  ", "Reminder list"), std::string(1000, 'x'));
    EXPECT_EQ(refusal(std::string(1001, 'x'), "Reminder list"), tooLong);
}

TEST(ItemTitle, IsCountedAsTheUserSeesIt) {
    // A family, a flag, a letter with its accent apart: one character each.
    const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
    for (const auto& character : {family, std::string("\U0001F1E9\U0001F1EA"), std::string("e\u0301")}) {
        EXPECT_EQ(validTitle(repeated(character, 1000), "Reminder"), repeated(character, 1000));
        EXPECT_NE(refusal(repeated(character, 1001), "Reminder"), "");
    }
}

} // namespace
} // namespace bridge
