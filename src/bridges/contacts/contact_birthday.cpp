#include "bridges/contacts/contact_birthday.h"

#include "base/apple_bridge_error.h"

#include <chrono>

namespace bridge {

namespace {

constexpr int64_t someLeapYear = 2000;

bool isDay(int64_t year, int64_t month, int64_t day) {
    // The types of the calendar are narrow: 257 would be January again.
    if (month < 1 || month > 12 || day < 1 || day > 31) return false;
    return std::chrono::year_month_day(std::chrono::year(static_cast<int>(year)),
                                       std::chrono::month(static_cast<unsigned>(month)),
                                       std::chrono::day(static_cast<unsigned>(day)))
        .ok();
}

} // namespace

Birthday checkedBirthday(const ContactBirthday& birthday) {
    if (birthday.year && (*birthday.year < 1 || *birthday.year > 9999))
        throw AppleBridgeError::malformedRequest("Contact birthday year must be between 1 and 9999.");
    if (!isDay(birthday.year.value_or(someLeapYear), birthday.month, birthday.day))
        throw AppleBridgeError::malformedRequest("Contact birthday is not a valid calendar date.");

    Birthday checked{.month = static_cast<int>(birthday.month), .day = static_cast<int>(birthday.day)};
    if (birthday.year) checked.year = static_cast<int>(*birthday.year);
    return checked;
}

ContactBirthday describeBirthday(const Birthday& birthday) {
    return {birthday.year, birthday.month, birthday.day};
}

} // namespace bridge
