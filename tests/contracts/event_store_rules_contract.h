#pragma once

#include "tests/contracts/event_store_fixture.h"
#include "tests/support/public_data.h"
#include "tests/support/rule_data.h"

// Recurrence rules and the times they must give.

namespace bridge {

// 19970902, 19970902T090000 or 19970902T090000Z; without a letter it is of this zone.
inline Date momentOf(const std::string& text, const std::string& zone) {
    const auto number = [&](size_t place, size_t length) { return std::stoi(text.substr(place, length)); };
    DateComponents components{number(0, 4), number(4, 2), number(6, 2)};
    if (text.size() > 8) {
        components.hour = number(9, 2);
        components.minute = number(11, 2);
        components.second = number(13, 2);
    }
    components.timeZone = text.ends_with('Z') ? "UTC" : zone;
    return dateFrom(components).value();
}

struct ExpectedOccurrences {
    std::vector<Date> moments;
    bool goesOn = false; // written as "..." behind the last
};

// The start is always an occurrence (RFC 5545, 3.8.2.4) and the first that COUNT counts; the examples list what the
// rule alone gives.
inline ExpectedOccurrences occurrencesOf(const RuleExample& example, const std::string& zone) {
    ExpectedOccurrences expected;
    auto& moments = expected.moments;
    for (const auto& instance : example.instances)
        if (instance == "...")
            expected.goesOn = true;
        else
            moments.push_back(momentOf(instance, zone));
    const auto start = momentOf(example.start.substr(example.start.find(':') + 1), zone);
    if (std::ranges::count(moments, start)) return expected;
    moments.insert(moments.begin(), start);
    if (moments.size() > 1 && example.rule.find("COUNT") != std::string::npos) moments.pop_back();
    return expected;
}

inline void EventStoreContract::expectOccurrences(const std::vector<RuleExample>& examples, const std::string& place) {
    const auto calendar = addCalendar();
    int number = 0;
    for (const auto& example : examples) {
        if (example.isInvalid) continue;
        SCOPED_TRACE(example.comment + ": " + example.rule + " from " + example.start);
        const auto uid = "rule-" + std::to_string(number++);
        put(calendar, component("VEVENT", uid, example.start + "\nRRULE:" + example.rule + "\nSUMMARY:Rule"));
        const auto expected = occurrencesOf(example, place);
        // Some weeks more than it lasts, to see that it ends.
        const auto from = later(expected.moments.front(), -86400);
        const auto to = later(expected.moments.back(), expected.goesOn ? 1 : 40 * 86400);
        std::vector<Date> found;
        for (const auto& event : wait(store().events(from, to, {calendar}, 1'000'000)))
            if (event.externalIdentifier == uid) found.push_back(event.startDate);
        EXPECT_EQ(found, expected.moments);
    }
}

TEST_P(EventStoreContract, KeepsTheRulesOfTheStandard) {
    const auto examples = readRuleExamples(BRIDGE_OWN_TEST_DATA "/rfc5545_rules.txt");
    ASSERT_EQ(examples.size(), 42u);
    expectOccurrences(examples, "America/New_York");
}

TEST_P(EventStoreContract, KeepsPublishedRules) {
    REQUIRE_PUBLIC_DATA("rrule");
    const auto examples = readRuleExamples((publicData("rrule") / "libical-icalrecur_test.txt").string());
    ASSERT_GT(examples.size(), 100u);
    const UserTimeZone utc("UTC"); // where floating times are those of UTC
    expectOccurrences(examples, "UTC");
}

} // namespace bridge
