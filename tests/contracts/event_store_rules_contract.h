#pragma once

#include "tests/adapters/ical/rule_data.h"
#include "tests/contracts/event_store_fixture.h"
#include "tests/support/public_data.h"

// Recurrence rules and the times they must give.

namespace bridge {

// 19970902, 19970902T090000 or 19970902T090000Z, as if of UTC.
inline Date momentOf(const std::string& text) {
    const auto time = text.size() > 8 ? text.substr(9, 6) : "000000";
    return parseDate(text.substr(0, 4) + "-" + text.substr(4, 2) + "-" + text.substr(6, 2) + "T" + time.substr(0, 2) +
                     ":" + time.substr(2, 2) + ":" + time.substr(4, 2) + "Z")
        .value();
}

// The start is always an occurrence (RFC 5545, 3.8.2.4) and the first that COUNT counts; the examples list what the
// rule alone gives.
inline std::vector<Date> occurrencesOf(const RuleExample& example) {
    std::vector<Date> moments;
    for (const auto& instance : example.instances)
        moments.push_back(momentOf(instance));
    const auto start = momentOf(example.start.substr(example.start.find(':') + 1));
    if (std::ranges::count(moments, start)) return moments;
    moments.insert(moments.begin(), start);
    if (moments.size() > 1 && example.rule.find("COUNT") != std::string::npos) moments.pop_back();
    return moments;
}

TEST_P(EventStoreContract, KeepsPublishedRecurrenceRules) {
    REQUIRE_PUBLIC_DATA("rrule");
    const UserTimeZone utc("UTC"); // floating times are compared as if they were of UTC
    const auto calendar = addCalendar();
    const auto examples = readRuleExamples((publicData("rrule") / "libical-icalrecur_test.txt").string());
    ASSERT_GT(examples.size(), 100u);
    int number = 0;
    for (const auto& example : examples) {
        if (example.isInvalid) continue;
        SCOPED_TRACE(example.comment + ": " + example.rule + " from " + example.start);
        const auto uid = "rule-" + std::to_string(number++);
        put(calendar, component("VEVENT", uid, example.start + "\nRRULE:" + example.rule + "\nSUMMARY:Rule"));
        const auto expected = occurrencesOf(example);
        // Some weeks more than it lasts, to see that it ends.
        const auto from = later(expected.front(), -86400), to = later(expected.back(), 40 * 86400);
        std::vector<Date> found;
        for (const auto& event : wait(store().events(from, to, {calendar}, 1'000'000)))
            if (event.externalIdentifier == uid) found.push_back(event.startDate);
        EXPECT_EQ(found, expected);
    }
}

} // namespace bridge
