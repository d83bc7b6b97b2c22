#include "bridges/contacts/contact_birthday.h"

#include "base/apple_bridge_error.h"

#include <gtest/gtest.h>
#include <limits>

namespace bridge {
namespace {

constexpr const char* wrongYear = "Malformed bridge request: Contact birthday year must be between 1 and 9999.";
constexpr const char* noDay = "Malformed bridge request: Contact birthday is not a valid calendar date.";

constexpr int64_t least = std::numeric_limits<int64_t>::min();
constexpr int64_t most = std::numeric_limits<int64_t>::max();

std::string failureOf(ContactBirthday birthday) {
    try {
        checkedBirthday(birthday);
    } catch (const AppleBridgeError& error) {
        return error.message();
    }
    return "";
}

TEST(ContactBirthday, IsKeptWithAndWithoutItsYear) {
    for (const auto& birthday : {ContactBirthday{1906, 12, 9}, ContactBirthday{{}, 12, 9}, ContactBirthday{1, 1, 1},
                                 ContactBirthday{9999, 12, 31}})
        EXPECT_EQ(describeBirthday(checkedBirthday(birthday)), birthday);
    EXPECT_EQ(checkedBirthday({{}, 5, 6}), (Birthday{{}, 5, 6}));
}

TEST(ContactBirthday, HasAYearBetween1And9999) {
    for (const auto year :
         {int64_t{0}, int64_t{-1}, int64_t{10'000}, least, most, int64_t{1} << 32, (int64_t{1} << 32) + 2000})
        EXPECT_EQ(failureOf({year, 1, 1}), wrongYear) << year;
    for (const auto year : {1, 2, 1582, 1900, 9998, 9999})
        EXPECT_EQ(failureOf({year, 1, 1}), "") << year;
}

TEST(ContactBirthday, IsToldOfItsYearBeforeItsDay) {
    EXPECT_EQ(failureOf({0, 13, 0}), wrongYear);
    EXPECT_EQ(failureOf({10'000, 2, 30}), wrongYear);
}

TEST(ContactBirthday, MayBeTheTwentyNinthOfFebruary) {
    EXPECT_EQ(failureOf({{}, 2, 29}), "");
    EXPECT_EQ(failureOf({2024, 2, 29}), "");
    EXPECT_EQ(failureOf({2000, 2, 29}), "");
    EXPECT_EQ(failureOf({2023, 2, 29}), noDay);
    EXPECT_EQ(failureOf({1900, 2, 29}), noDay);
    EXPECT_EQ(failureOf({{}, 2, 30}), noDay);
}

TEST(ContactBirthday, IsADayOfItsMonth) {
    constexpr int lengths[] = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    for (int month = 1; month <= 12; ++month) {
        const int length = lengths[month - 1];
        EXPECT_EQ(failureOf({{}, month, 1}), "");
        EXPECT_EQ(failureOf({{}, month, length}), "");
        EXPECT_EQ(failureOf({{}, month, length + 1}), noDay) << month;
        EXPECT_EQ(failureOf({{}, month, 0}), noDay);
    }
}

TEST(ContactBirthday, RefusesNumbersFarBeyondACalendar) {
    for (const auto odd :
         {int64_t{-1}, int64_t{0}, int64_t{13}, int64_t{257}, int64_t{65'537}, (int64_t{1} << 32) + 1, least, most})
        EXPECT_EQ(failureOf({2000, odd, 1}), noDay) << odd;
    for (const auto odd : {int64_t{-1}, int64_t{0}, int64_t{32}, int64_t{257}, (int64_t{1} << 32) + 1, least, most})
        EXPECT_EQ(failureOf({2000, 1, odd}), noDay) << odd;
}

} // namespace
} // namespace bridge
