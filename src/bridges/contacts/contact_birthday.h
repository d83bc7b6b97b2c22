#pragma once

#include "base/record.h"
#include "platform/contact_store.h"

namespace bridge {

// A birthday on the wire; many people tell the day but not the year.
struct ContactBirthday {
    std::optional<int64_t> year;
    int64_t month = 0;
    int64_t day = 0;

    bool operator==(const ContactBirthday&) const = default;
    static constexpr auto fields() {
        return std::tuple{optional("year", &ContactBirthday::year), required("month", &ContactBirthday::month),
                          required("day", &ContactBirthday::day)};
    }
};
static_assert(listsEveryMember<ContactBirthday>());

// As a contact keeps it. Throws AppleBridgeError malformedRequest for a year outside 1...9999, and for a day that the
// Gregorian calendar does not have; without a year 29 February is one.
Birthday checkedBirthday(const ContactBirthday& birthday);

ContactBirthday describeBirthday(const Birthday& birthday);

} // namespace bridge
