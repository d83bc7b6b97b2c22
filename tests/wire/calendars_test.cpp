#include "tests/support/running_bridge.h"
#include "tests/support/wire_client.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Consent = RunningBridge::Consent;

// A bridge that may use calendars and reminders, with nothing on its allow-lists.
class CalendarsOverTheWire : public testing::Test {
protected:
    // The identifier of what an operation made.
    static std::string made(const WireAnswer& answer) {
        EXPECT_EQ(answer.status, 200) << answer.bytes;
        return *answer.result().object()->at("id").string();
    }
    static std::string identified(const std::string& id, const std::string& members = "") {
        return R"({"identifier":")" + id + "\"" + members + "}";
    }
    static std::string deleted(const std::string& id) { return R"({"deleted":true,"identifier":")" + id + R"("})"; }
    // How many calendars, or lists, are allowed and available, according to both places that tell.
    static std::string counts(const char* resources) {
        const auto health = exchange(requestBytes("GET", "/health")).result();
        const auto counted = health.object()->at("permissions").object()->at(resources);
        EXPECT_EQ(call("permissions.get").result().object()->at(resources), counted);
        return writeJSON(counted);
    }

    RunningBridge bridge{Consent::full};
};

TEST_F(CalendarsOverTheWire, AreMadeListedRenamedAndDeleted) {
    EXPECT_EQ(writeJSON(call("calendar.list").result()), "[]");
    const auto sources = call("calendar.sources.list").result();
    ASSERT_FALSE(sources.array()->empty());
    const auto& source = *sources.array()->front().object();
    EXPECT_EQ(source.size(), 3u);
    const auto id =
        made(call("calendar.create", R"({"title":" Garden ","sourceID":)" + writeJSON(source.at("id")) + "}"));
    const auto listed = call("calendar.list").result();
    EXPECT_EQ(writeJSON(listed), R"([{"allowsContentModifications":true,"id":")" + id + R"(","sourceTitle":)" +
                                     writeJSON(source.at("title")) + R"(,"sourceType":)" +
                                     writeJSON(source.at("sourceType")) + R"(,"title":"Garden"}])");
    EXPECT_EQ(made(call("calendar.update", identified(id, R"(,"title":"Vegetables")"))), id);
    EXPECT_EQ(call("calendar.delete", identified(id)).code(), "confirmation_required");
    EXPECT_EQ(writeJSON(call("calendar.delete", identified(id), true).result()), deleted(id));
    EXPECT_EQ(call("calendar.delete", identified(id), true).message(), "Calendar not found: " + id);
}

TEST_F(CalendarsOverTheWire, EventsAreMadeFoundChangedAndDeleted) {
    const auto calendar = made(call("calendar.create", R"({"title":"Garden"})"));
    const auto created =
        call("calendar.events.create", R"({"calendarID":")" + calendar +
                                           R"(","title":"Sowing","startDate":"2026-08-14T09:00:00+02:00",)"
                                           R"("endDate":"2026-08-14T08:00:00Z","isAllDay":false,"notes":"seeds",)"
                                           R"("url":"https://example.com/?q=1","alarmOffsetSeconds":-600})");
    const auto id = made(created);
    const auto result = created.result();
    const auto& event = *result.object();
    EXPECT_EQ(*event.at("startDate").string(), "2026-08-14T07:00:00Z");
    EXPECT_EQ(*event.at("calendarTitle").string(), "Garden");
    EXPECT_FALSE(event.contains("location"));

    const auto search = [](const char* end, const std::string& more = "") {
        return call("calendar.events.search",
                    std::string(R"({"startDate":"2026-08-14T00:00:00Z","calendarIDs":[],"endDate":")") + end + "\"" +
                        more + "}");
    };
    const auto found = search("2026-08-15T00:00:00Z").result();
    ASSERT_EQ(found.array()->size(), 1u);
    EXPECT_EQ(found.array()->front(), result);
    EXPECT_EQ(search("2026-08-14T00:00:00Z").code(), "invalid_date_range");
    EXPECT_EQ(search("2026-08-15").code(), "malformed_request");

    const auto updated = call("calendar.events.update",
                              identified(id, R"(,"location":"Field","notes":"x","clearNotes":true,"clearURL":null)"));
    EXPECT_EQ(*updated.result().object()->at("location").string(), "Field");
    EXPECT_FALSE(updated.result().object()->contains("notes"));
    EXPECT_TRUE(updated.result().object()->contains("url"));
    EXPECT_EQ(call("calendar.events.update", identified(id, R"(,"startDate":"2026-08-14T08:00:00Z")")).code(),
              "invalid_date_range");
    EXPECT_EQ(call("calendar.events.delete", identified(id)).code(), "confirmation_required");
    EXPECT_EQ(writeJSON(call("calendar.events.delete", identified(id), true).result()), deleted(id));
    EXPECT_EQ(call("calendar.events.delete", identified(id), true).code(), "event_not_found");
    EXPECT_EQ(writeJSON(search("2026-08-15T00:00:00Z", R"(,"limit":5)").result()), "[]");
}

TEST_F(CalendarsOverTheWire, RemindersAndTheirListsToo) {
    const auto list = made(call("reminders.lists.create", R"({"title":"Garden"})"));
    EXPECT_EQ(made(call("reminders.lists.update", identified(list, R"(,"title":"Shed")"))), list);
    EXPECT_EQ(call("reminders.lists.list").result().array()->size(), 1u);
    EXPECT_EQ(call("reminders.sources.list").result(), call("calendar.sources.list").result());

    const auto created =
        call("reminders.create", R"({"title":"Water","priority":12,"dueDate":"2026-08-14T10:30:45Z"})");
    const auto id = made(created);
    EXPECT_EQ(*created.result().object()->at("listTitle").string(), "Shed");
    EXPECT_EQ(*created.result().object()->at("priority").number(), 9);
    EXPECT_EQ(*created.result().object()->at("dueDate").string(), "2026-08-14T10:30:00Z");
    const auto updated = call("reminders.update", identified(id, R"(,"isCompleted":true,"priority":-3)"));
    EXPECT_TRUE(updated.result().object()->contains("completionDate"));
    EXPECT_EQ(*updated.result().object()->at("priority").number(), 0);
    const auto found = call("reminders.search", R"({"listIDs":[],"query":"WATER"})").result();
    ASSERT_EQ(found.array()->size(), 1u);
    EXPECT_EQ(found.array()->front(), updated.result());
    EXPECT_EQ(call("reminders.delete", identified(id)).code(), "confirmation_required");
    EXPECT_EQ(writeJSON(call("reminders.delete", identified(id), true).result()), deleted(id));
    EXPECT_EQ(call("reminders.update", identified(id)).code(), "reminder_not_found");
    EXPECT_EQ(writeJSON(call("reminders.lists.delete", identified(list), true).result()), deleted(list));
    EXPECT_EQ(call("reminders.lists.delete", identified(list), true).code(), "list_not_found");
}

TEST_F(CalendarsOverTheWire, RefusalsHaveTheirCodes) {
    const auto refused = call("reminders.search", R"({"listIDs":[]})");
    EXPECT_EQ(refused.status, 403);
    EXPECT_EQ(refused.code(), "resource_access_denied");
    EXPECT_EQ(refused.message(), "Brindlefox resource access denied: No reminder lists have been authorized in "
                                 "Brindlefox Apple Bridge.");
    EXPECT_EQ(call("calendar.create", R"({"title":""})").message(),
              "Malformed bridge request: Calendar title cannot be empty.");
    EXPECT_EQ(call("calendar.create", R"({"title":"x","sourceID":"nowhere"})").code(), "resource_not_found");
    EXPECT_EQ(call("calendar.update", identified("nowhere", R"(,"title":"x")")).code(), "calendar_not_found");
    EXPECT_EQ(call("calendar.events.update", identified("nowhere")).code(), "event_not_found");
    EXPECT_EQ(call("calendar.events.search", R"({"startDate":"2026-08-14T00:00:00Z"})").code(), "malformed_request");
}

TEST_F(CalendarsOverTheWire, AreCountedInTheSnapshot) {
    bridge.allowAll(true);
    const auto before = counts("calendarResources");
    EXPECT_EQ(before, counts("reminderListResources"));
    bridge.allowAll(false);
    made(call("calendar.create", R"({"title":"Garden"})"));
    const auto available = static_cast<int>(*parseJSON(before).object()->at("available").number());
    EXPECT_EQ(counts("calendarResources"), R"({"allowed":1,"available":)" + std::to_string(available + 1) + "}");
    EXPECT_EQ(counts("reminderListResources"), R"({"allowed":0,"available":)" + std::to_string(available) + "}");
}

TEST(CalendarsWithoutPermission, AreRefused) {
    const RunningBridge bridge;
    for (const auto* operation : {"calendar.list", "calendar.sources.list"}) {
        const auto answer = call(operation);
        EXPECT_EQ(answer.status, 403);
        EXPECT_EQ(answer.code(), "permission_denied");
        EXPECT_EQ(answer.message(), "Full access to Calendar has not been granted.");
    }
    EXPECT_EQ(call("reminders.delete", R"({"identifier":"r"})", true).message(),
              "Full access to Reminders has not been granted.");
}

} // namespace
} // namespace bridge
