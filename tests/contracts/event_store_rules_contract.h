#pragma once

#include "tests/contracts/event_store_fixture.h"
#include "tests/support/public_data.h"
#include "tests/support/recurrence_cases.h"
#include "tests/support/rules_beyond_libical.h"

// Recurrence rules and the times they must give.

namespace bridge {

TEST_P(EventStoreContract, KeepsPublishedRecurrenceRules) {
    REQUIRE_PUBLIC_DATA("rrule");
    const UserTimeZone utc("UTC"); // the cases' floating times are compared as if they were of UTC
    const auto calendar = addCalendar();
    const auto cases = readRecurrenceCases(publicData("rrule") / "libical-icalrecur_test.txt");
    ASSERT_GT(cases.size(), 100u);
    int number = 0, kept = 0;
    for (const auto& each : cases) {
        SCOPED_TRACE(each.title + ": " + each.rule + " from " + each.start);
        const auto uid = "rule-" + std::to_string(number++);
        put(calendar, component("VEVENT", uid, each.startProperty() + "\nRRULE:" + each.rule + "\nSUMMARY:Rule"));
        std::vector<Date> found;
        const auto last = each.instances.empty() ? each.startDate() : each.instances.back();
        for (const auto& event :
             wait(store().events(later(each.startDate(), -86400), later(last, 40 * 86400), {calendar}, 1'000'000)))
            if (event.externalIdentifier == uid) found.push_back(event.startDate);
        // A start that its own rule does not give is an occurrence to some and not to others: RFC 5545, 3.8.5.3 leaves
        // it open, so it is not looked at.
        if (!std::ranges::count(each.instances, each.startDate())) std::erase(found, each.startDate());
        if (isBeyondLibical(each)) continue;
        EXPECT_EQ(found, each.instances);
        kept += found == each.instances ? 1 : 0;
    }
    EXPECT_GE(kept, 100);
}

} // namespace bridge
