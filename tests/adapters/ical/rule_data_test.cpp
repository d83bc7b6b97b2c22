#include "tests/adapters/ical/calendar_text.h"
#include "tests/support/public_data.h"
#include "tests/support/rule_data.h"
#include "tests/support/time_zone.h"

#include <algorithm>
#include <gmock/gmock.h>

namespace bridge {

namespace {

CalendarObject series(const RuleExample& example) {
    return parseEvent({example.start, "RRULE:" + example.rule});
}

std::vector<std::string> ids(const std::vector<Occurrence>& occurrences) {
    std::vector<std::string> all;
    for (const auto& occurrence : occurrences)
        all.push_back(occurrence.recurrenceID);
    return all;
}

std::string firstTime(const RuleExample& example) {
    return example.start.substr(example.start.find(':') + 1);
}

// The start is always an occurrence (RFC 5545, 3.8.2.4), and the first one that COUNT counts, also where a rule does
// not give it; the examples of libical list what the rule gives.
std::vector<std::string> withStart(const RuleExample& example) {
    auto expected = example.instances;
    if (std::find(expected.begin(), expected.end(), firstTime(example)) != expected.end()) return expected;
    expected.insert(expected.begin(), firstTime(example));
    if (expected.size() > 1 && example.rule.find("COUNT") != std::string::npos) expected.pop_back();
    return expected;
}

// However the question is cut, the answers are parts of the same.
void expectSameInParts(const CalendarObject& object, const std::vector<Occurrence>& all, const std::string& rule) {
    for (size_t i = 0; i < all.size(); i += std::max<size_t>(all.size() / 5, 1)) {
        const auto found = object.occurrences(all[i].start.date(), latestDate, 10'000);
        const std::vector<Occurrence> rest(all.begin() + static_cast<long>(i), all.end());
        EXPECT_EQ(ids(found), ids(rest)) << rule << " from " << all[i].recurrenceID;
        const auto again = object.occurrence(all[i].recurrenceID);
        ASSERT_TRUE(again) << rule << " at " << all[i].recurrenceID;
        EXPECT_EQ(again->start, all[i].start);
    }
}

void expectInstances(const std::vector<RuleExample>& examples) {
    ASSERT_GT(examples.size(), 10U);
    const UserTimeZone utc("UTC");
    for (const auto& example : examples) {
        const auto object = series(example);
        const auto all = object.occurrences(earliestDate, latestDate, 10'000);
        EXPECT_EQ(ids(all), withStart(example)) << example.comment << "\n" << example.rule;
        expectSameInParts(object, all, example.rule);
    }
}

} // namespace

TEST(RuleData, OfTheStandardGivesTheSameInstances) {
    auto examples = readRuleExamples(BRIDGE_OWN_TEST_DATA "/rfc5545_rules.txt");
    ASSERT_EQ(examples.size(), 42U);
    for (auto& example : examples) {
        const bool goesOn = !example.instances.empty() && example.instances.back() == "...";
        if (goesOn) example.instances.pop_back();
        const auto expected = withStart(example);
        const auto object = series(example);
        const auto all = object.occurrences(earliestDate, latestDate, goesOn ? expected.size() : 10'000);
        EXPECT_EQ(ids(all), expected) << example.comment << "\n" << example.rule;
        EXPECT_EQ(object.span()->end.has_value(), !goesOn) << example.rule;
    }
}

TEST(RuleData, OfLibicalGivesTheSameInstances) {
    REQUIRE_PUBLIC_DATA("rrule");
    expectInstances(readRuleExamples(publicData("rrule") / "libical-icalrecur_test.txt"));
}

} // namespace bridge
