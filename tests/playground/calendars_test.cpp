#include "base/date.h"
#include "tests/playground/playground_process.h"

#include <csignal>
#include <ctime>
#include <gmock/gmock.h>
#include <set>

namespace bridge {
namespace {

class Calendars : public testing::Test {
protected:
    static std::string daysFromNow(int days) { return formatDate({std::time(nullptr) + days * int64_t{86400}}); }
    static std::string weekOf(const std::string& identifiers = "[]") {
        return R"({"startDate":")" + daysFromNow(0) + R"(","endDate":")" + daysFromNow(7) + R"(","calendarIDs":)" +
               identifiers + "}";
    }
    // The members of this name of a list of records.
    static std::vector<std::string> each(const WireAnswer& answer, const char* name) {
        std::vector<std::string> values;
        const auto result = answer.result();
        for (const auto& record : *result.array())
            values.push_back(*record.object()->at(name).string());
        return values;
    }
    std::vector<std::string> words(std::vector<std::string> more = {}) const {
        more.insert(more.end(), {"--profile", temporary.file("kept")});
        return more;
    }

    TemporaryFolder temporary;
};

TEST_F(Calendars, AreThereToBeTried) {
    const ServingPlayground playground(temporary);
    const auto listed = playground.call("calendar.list");
    EXPECT_THAT(each(listed, "title"), testing::IsSupersetOf({"Home", "Meetings", "Rooms", "Holidays"}));
    const auto accounts = each(listed, "sourceTitle");
    EXPECT_EQ(std::set<std::string>(accounts.begin(), accounts.end()).size(), 3U);
    std::set<bool> modifiable;
    const auto calendars = listed.result();
    for (const auto& calendar : *calendars.array())
        modifiable.insert(*calendar.object()->at("allowsContentModifications").boolean());
    EXPECT_EQ(modifiable.size(), 2U);
    EXPECT_EQ(each(playground.call("calendar.sources.list"), "title").size(), 2U);

    EXPECT_THAT(each(playground.call("reminders.lists.list"), "title"),
                testing::IsSupersetOf({"Errands", "Books", "Follow-ups"}));
}

TEST_F(Calendars, HaveSomethingThisWeek) {
    const ServingPlayground playground(temporary);
    const auto found = playground.call("calendar.events.search", weekOf());
    const auto titles = each(found, "title");
    EXPECT_THAT(titles, testing::IsSupersetOf({"Dentist", "Choir", "Founders' Day", "Large room: painters"}));
    size_t repeating = 0, allDay = 0;
    const auto events = found.result();
    for (const auto& event : *events.array()) {
        repeating += *event.object()->at("hasRecurrenceRules").boolean() ? 1 : 0;
        allDay += *event.object()->at("isAllDay").boolean() ? 1 : 0;
    }
    EXPECT_GE(repeating, 2U);
    EXPECT_GE(allDay, 2U);
}

TEST_F(Calendars, HaveRemindersWithAndWithoutADate) {
    const ServingPlayground playground(temporary);
    const auto found = playground.call("reminders.search", R"({"listIDs":[]})").result();
    size_t dated = 0, undated = 0, completed = 0;
    for (const auto& reminder : *found.array()) {
        ++(reminder.object()->contains("dueDate") ? dated : undated);
        completed += *reminder.object()->at("isCompleted").boolean() ? 1 : 0;
    }
    EXPECT_GE(dated, 3U);
    EXPECT_GE(undated, 3U);
    EXPECT_GE(completed, 1U);
}

TEST_F(Calendars, ComeOnceToAKeptProfile) {
    size_t before = 0;
    {
        ServingPlayground first(temporary, words());
        before = each(first.call("calendar.list"), "id").size();
        EXPECT_EQ(first.end(SIGTERM).status, 0);
    }
    const ServingPlayground second(temporary, words());
    EXPECT_EQ(each(second.call("calendar.list"), "id").size(), before);
}

TEST_F(Calendars, AreAuthorizedAllOrNoneOrAsBefore) {
    size_t all = 0;
    {
        ServingPlayground playground(temporary, words());
        all = each(playground.call("calendar.list"), "id").size();
        EXPECT_GT(all, 3U);
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    {
        ServingPlayground playground(temporary, words({"--calendars", "none"}));
        EXPECT_TRUE(each(playground.call("calendar.list"), "id").empty());
        EXPECT_EQ(playground.call("calendar.events.search", weekOf()).code(), "resource_access_denied");
        EXPECT_FALSE(each(playground.call("reminders.lists.list"), "id").empty());
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    {
        ServingPlayground playground(temporary, words({"--calendars", "keep", "--reminder-lists", "none"}));
        EXPECT_TRUE(each(playground.call("calendar.list"), "id").empty());
        EXPECT_TRUE(each(playground.call("reminders.lists.list"), "id").empty());
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    const ServingPlayground playground(temporary, words({"--calendars", "all", "--reminder-lists", "keep"}));
    EXPECT_EQ(each(playground.call("calendar.list"), "id").size(), all);
    EXPECT_TRUE(each(playground.call("reminders.lists.list"), "id").empty());
}

TEST_F(Calendars, AreAuthorizedAlsoWhereAccessIsDenied) {
    {
        ServingPlayground playground(
            temporary, words({"--permission", "calendar=denied", "--permission", "reminders=notDetermined"}));
        EXPECT_EQ(playground.call("calendar.list").code(), "permission_denied");
        EXPECT_EQ(playground.call("reminders.search", R"({"listIDs":[]})").code(), "permission_denied");
        const auto permissions = playground.call("permissions.get").result();
        EXPECT_EQ(*permissions.object()->at("calendarResources").object()->at("allowed").number(), 0);
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    const ServingPlayground playground(temporary, words({"--calendars", "keep", "--reminder-lists", "keep"}));
    EXPECT_GT(each(playground.call("calendar.list"), "id").size(), 3U);
    EXPECT_GT(each(playground.call("reminders.lists.list"), "id").size(), 2U);
}

TEST_F(Calendars, ComeFromFilesToo) {
    putFile(temporary / "Club.ics", "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//Club//EN\r\nBEGIN:VEVENT\r\nUID:1\r\n"
                                    "DTSTAMP:20260101T000000Z\r\nDTSTART:20260814T090000Z\r\nDURATION:PT1H\r\n"
                                    "SUMMARY:Meeting of the club\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n");
    ServingPlayground playground(temporary, words({"--import", temporary.file("Club.ics")}));
    EXPECT_THAT(each(playground.call("calendar.list"), "title"), testing::Contains("Club"));
    const auto found = playground.call("calendar.events.search",
                                       R"({"startDate":"2026-08-14T00:00:00Z","endDate":"2026-08-15T00:00:00Z",)"
                                       R"("calendarIDs":[]})");
    EXPECT_THAT(each(found, "title"), testing::Contains("Meeting of the club"));
    const auto ended = playground.end(SIGTERM);
    EXPECT_EQ(ended.status, 0);
    EXPECT_THAT(ended.errors, testing::HasSubstr("1 event as calendar \"Club\""));
}

TEST_F(Calendars, ThatCanNotBeImportedAreSaid) {
    const auto ended = runPlayground(temporary, {"--serve", "--import", temporary.file("missing.ics")});
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, "");
    EXPECT_THAT(ended.errors, testing::HasSubstr("missing.ics\n  not taken: No such file or directory.\n"));
    EXPECT_THAT(ended.errors, testing::HasSubstr("missing.ics could not be imported.\n"));
}

} // namespace
} // namespace bridge
