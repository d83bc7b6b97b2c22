#include "server/operation.h"

#include <gtest/gtest.h>
#include <set>

namespace bridge {
namespace {

enum class Payload { ignored, required };

struct ExpectedRow {
    std::string_view name;
    std::string_view capability; // empty: none, or known only from the request
    Confirm confirm;
    Payload payload;
};

// The table once more, written out: agents are written against it.
constexpr ExpectedRow expected[] = {
    {"permissions.get", "", Confirm::never, Payload::ignored},
    {"calendar.list", "calendar.calendars.read", Confirm::never, Payload::ignored},
    {"calendar.sources.list", "calendar.calendars.create", Confirm::never, Payload::ignored},
    {"calendar.create", "calendar.calendars.create", Confirm::never, Payload::required},
    {"calendar.update", "calendar.calendars.update", Confirm::never, Payload::required},
    {"calendar.delete", "calendar.calendars.delete", Confirm::always, Payload::required},
    {"calendar.events.search", "calendar.events.read", Confirm::never, Payload::required},
    {"calendar.events.create", "calendar.events.create", Confirm::never, Payload::required},
    {"calendar.events.update", "calendar.events.update", Confirm::never, Payload::required},
    {"calendar.events.delete", "calendar.events.delete", Confirm::always, Payload::required},
    {"reminders.lists.list", "reminders.lists.read", Confirm::never, Payload::ignored},
    {"reminders.sources.list", "reminders.lists.create", Confirm::never, Payload::ignored},
    {"reminders.lists.create", "reminders.lists.create", Confirm::never, Payload::required},
    {"reminders.lists.update", "reminders.lists.update", Confirm::never, Payload::required},
    {"reminders.lists.delete", "reminders.lists.delete", Confirm::always, Payload::required},
    {"reminders.search", "reminders.items.read", Confirm::never, Payload::required},
    {"reminders.create", "reminders.items.create", Confirm::never, Payload::required},
    {"reminders.update", "reminders.items.update", Confirm::never, Payload::required},
    {"reminders.delete", "reminders.items.delete", Confirm::always, Payload::required},
    {"contacts.search", "contacts.read", Confirm::never, Payload::required},
    {"contacts.groups.list", "contacts.groups.read", Confirm::never, Payload::ignored},
    {"contacts.create", "contacts.create", Confirm::never, Payload::required},
    {"contacts.update", "contacts.update", Confirm::never, Payload::required},
    {"contacts.delete", "contacts.delete", Confirm::always, Payload::required},
    {"contacts.groups.create", "contacts.groups.create", Confirm::never, Payload::required},
    {"contacts.groups.add_members", "contacts.groups.update", Confirm::never, Payload::required},
    {"contacts.groups.remove_members", "contacts.groups.update", Confirm::never, Payload::required},
    {"contacts.groups.delete", "contacts.groups.delete", Confirm::always, Payload::required},
    {"music.search", "music.library.read", Confirm::never, Payload::required},
    {"music.playlists.list", "music.playlists.read", Confirm::never, Payload::required},
    {"music.playlists.create", "music.playlists.create", Confirm::never, Payload::required},
    {"music.playlists.add_songs", "music.playlists.update", Confirm::never, Payload::required},
    {"music.playlists.delete", "music.playlists.delete", Confirm::always, Payload::required},
    {"music.play", "music.playback", Confirm::never, Payload::required},
    {"music.pause", "music.playback", Confirm::never, Payload::ignored},
    {"files.roots.list", "files.list", Confirm::never, Payload::ignored},
    {"files.list", "files.list", Confirm::never, Payload::required},
    {"files.read_text", "files.read", Confirm::never, Payload::required},
    {"files.write_text", "", Confirm::whenOverwriting, Payload::required},
    {"files.create_directory", "files.create", Confirm::never, Payload::required},
    {"files.move", "files.update", Confirm::whenOverwriting, Payload::required},
    {"files.delete", "files.delete", Confirm::always, Payload::required},
    {"iwork.pages.create", "iwork.pages.create", Confirm::never, Payload::required},
    {"iwork.pages.read", "iwork.pages.read", Confirm::never, Payload::required},
    {"iwork.numbers.read_range", "iwork.numbers.read", Confirm::never, Payload::required},
    {"iwork.numbers.create", "iwork.numbers.create", Confirm::never, Payload::required},
    {"iwork.numbers.write_range", "iwork.numbers.update", Confirm::never, Payload::required},
    {"iwork.keynote.create", "iwork.keynote.create", Confirm::never, Payload::required},
    {"iwork.export", "", Confirm::never, Payload::required},
    {"location.current", "location.current", Confirm::never, Payload::ignored},
    {"maps.places.search", "maps.places.search", Confirm::never, Payload::required},
    {"maps.directions", "maps.directions", Confirm::never, Payload::required},
};

TEST(OperationTable, HoldsTheFiftyTwoOperations) {
    std::set<std::string_view> names;
    for (const auto group : operationGroups())
        for (const auto& row : group)
            EXPECT_TRUE(names.insert(row.name).second) << row.name << " stands twice";
    EXPECT_EQ(names.size(), 52u);
    for (const auto& row : expected)
        EXPECT_TRUE(names.contains(row.name)) << row.name;
    EXPECT_EQ(std::size(expected), 52u);
}

TEST(OperationTable, NamesCapabilityAndConfirmationOfEach) {
    for (const auto& row : expected) {
        const auto* operation = findOperation(row.name);
        ASSERT_TRUE(operation) << row.name;
        EXPECT_EQ(operation->capability ? rawValue(*operation->capability) : "", row.capability) << row.name;
        EXPECT_EQ(operation->confirm, row.confirm) << row.name;
    }
}

TEST(OperationTable, AsksForAPayloadWhereThereIsARecord) {
    for (const auto& row : expected) {
        const auto* operation = findOperation(row.name);
        ASSERT_TRUE(operation) << row.name;
        if (row.payload == Payload::ignored) {
            EXPECT_TRUE(operation->prepare(*operation, std::nullopt)) << row.name;
            EXPECT_TRUE(operation->prepare(*operation, JSONValue{5.0})) << row.name;
            continue;
        }
        try {
            operation->prepare(*operation, std::nullopt);
            ADD_FAILURE() << row.name << " took no payload for one";
        } catch (const AppleBridgeError& error) {
            EXPECT_STREQ(error.what(), "Malformed bridge request: Missing payload.") << row.name;
        }
        EXPECT_THROW(operation->prepare(*operation, JSONValue{5.0}), AppleBridgeError) << row.name;
        EXPECT_THROW(operation->prepare(*operation, JSONValue{JSONValue::Object()}), AppleBridgeError) << row.name;
    }
}

TEST(OperationTable, IsSearchedExactly) {
    for (const auto name : {"", "Files.list", "files.list ", "files", "files.lis", "files.listt", "constructor"})
        EXPECT_EQ(findOperation(name), nullptr) << name;
}

} // namespace
} // namespace bridge
