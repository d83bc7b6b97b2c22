#include "policy/bridge_capability.h"

#include <gtest/gtest.h>
#include <set>

namespace bridge {
namespace {

using Capability = BridgeCapability;
using Group = BridgeCapabilityGroup;
using Section = BridgeCapabilitySection;

struct CatalogueRow {
    Capability capability;
    std::string_view rawValue, title;
    Group group;
    Section section;
};

// The whole catalogue once more, written out: these strings are stored on people's machines and compared by the agent.
constexpr CatalogueRow catalogue[] = {
    {Capability::calendarEventsRead, "calendar.events.read", "Read events", Group::calendar, Section::events},
    {Capability::calendarEventCreate, "calendar.events.create", "Create events", Group::calendar, Section::events},
    {Capability::calendarEventUpdate, "calendar.events.update", "Edit events", Group::calendar, Section::events},
    {Capability::calendarEventDelete, "calendar.events.delete", "Delete events", Group::calendar, Section::events},
    {Capability::calendarsRead, "calendar.calendars.read", "Read calendars", Group::calendar, Section::calendars},
    {Capability::calendarCreate, "calendar.calendars.create", "Create calendars", Group::calendar, Section::calendars},
    {Capability::calendarUpdate, "calendar.calendars.update", "Rename calendars", Group::calendar, Section::calendars},
    {Capability::calendarDelete, "calendar.calendars.delete", "Delete calendars", Group::calendar, Section::calendars},
    {Capability::reminderItemsRead, "reminders.items.read", "Read reminders", Group::reminders, Section::reminderItems},
    {Capability::reminderCreate, "reminders.items.create", "Create reminders", Group::reminders,
     Section::reminderItems},
    {Capability::reminderUpdate, "reminders.items.update", "Edit and complete reminders", Group::reminders,
     Section::reminderItems},
    {Capability::reminderDelete, "reminders.items.delete", "Delete reminders", Group::reminders,
     Section::reminderItems},
    {Capability::reminderListsRead, "reminders.lists.read", "Read lists", Group::reminders, Section::reminderLists},
    {Capability::reminderListCreate, "reminders.lists.create", "Create lists", Group::reminders,
     Section::reminderLists},
    {Capability::reminderListUpdate, "reminders.lists.update", "Rename lists", Group::reminders,
     Section::reminderLists},
    {Capability::reminderListDelete, "reminders.lists.delete", "Delete lists", Group::reminders,
     Section::reminderLists},
    {Capability::contactsRead, "contacts.read", "Read contacts", Group::contacts, Section::contacts},
    {Capability::contactsCreate, "contacts.create", "Create contacts", Group::contacts, Section::contacts},
    {Capability::contactsUpdate, "contacts.update", "Edit contacts", Group::contacts, Section::contacts},
    {Capability::contactsDelete, "contacts.delete", "Delete contacts", Group::contacts, Section::contacts},
    {Capability::contactGroupsRead, "contacts.groups.read", "Read groups", Group::contacts, Section::contactGroups},
    {Capability::contactGroupsCreate, "contacts.groups.create", "Create groups", Group::contacts,
     Section::contactGroups},
    {Capability::contactGroupsUpdate, "contacts.groups.update", "Change group membership", Group::contacts,
     Section::contactGroups},
    {Capability::contactGroupsDelete, "contacts.groups.delete", "Delete groups", Group::contacts,
     Section::contactGroups},
    {Capability::musicLibraryRead, "music.library.read", "Search the music library", Group::music,
     Section::musicLibrary},
    {Capability::musicPlaylistsRead, "music.playlists.read", "Read playlists", Group::music, Section::playlists},
    {Capability::musicPlaylistsCreate, "music.playlists.create", "Create playlists", Group::music, Section::playlists},
    {Capability::musicPlaylistsUpdate, "music.playlists.update", "Add songs to playlists", Group::music,
     Section::playlists},
    {Capability::musicPlaylistsDelete, "music.playlists.delete", "Delete playlists", Group::music, Section::playlists},
    {Capability::musicPlayback, "music.playback", "Control playback", Group::music, Section::playback},
    {Capability::filesList, "files.list", "List files and folders", Group::files, Section::fileAccess},
    {Capability::filesRead, "files.read", "Read text files", Group::files, Section::fileAccess},
    {Capability::filesCreate, "files.create", "Create files and folders", Group::files, Section::fileChanges},
    {Capability::filesUpdate, "files.update", "Overwrite and move files", Group::files, Section::fileChanges},
    {Capability::filesDelete, "files.delete", "Delete files and folders", Group::files, Section::fileChanges},
    {Capability::pagesRead, "iwork.pages.read", "Read documents", Group::pages, Section::pagesDocuments},
    {Capability::pagesCreate, "iwork.pages.create", "Create documents", Group::pages, Section::pagesDocuments},
    {Capability::pagesExport, "iwork.pages.export", "Export documents", Group::pages, Section::pagesDocuments},
    {Capability::numbersRead, "iwork.numbers.read", "Read spreadsheets", Group::numbers, Section::numbersSpreadsheets},
    {Capability::numbersCreate, "iwork.numbers.create", "Create spreadsheets", Group::numbers,
     Section::numbersSpreadsheets},
    {Capability::numbersUpdate, "iwork.numbers.update", "Edit spreadsheets", Group::numbers,
     Section::numbersSpreadsheets},
    {Capability::numbersExport, "iwork.numbers.export", "Export spreadsheets", Group::numbers,
     Section::numbersSpreadsheets},
    {Capability::keynoteCreate, "iwork.keynote.create", "Create presentations", Group::keynote,
     Section::keynotePresentations},
    {Capability::keynoteExport, "iwork.keynote.export", "Export presentations", Group::keynote,
     Section::keynotePresentations},
    {Capability::currentLocation, "location.current", "Read current location", Group::locationMaps, Section::location},
    {Capability::placesSearch, "maps.places.search", "Search places", Group::locationMaps, Section::maps},
    {Capability::directions, "maps.directions", "Calculate directions", Group::locationMaps, Section::maps},
};

TEST(CapabilityCatalogue, IsAsStoredAndCompared) {
    ASSERT_EQ(std::size(catalogue), capabilityCount);
    for (size_t index = 0; index < capabilityCount; ++index) {
        const auto& row = catalogue[index];
        EXPECT_EQ(allCapabilities[index], row.capability);
        EXPECT_EQ(rawValue(row.capability), row.rawValue);
        EXPECT_EQ(title(row.capability), row.title);
        EXPECT_EQ(groupOf(row.capability), row.group) << row.rawValue;
        EXPECT_EQ(sectionOf(row.capability), row.section) << row.rawValue;
        EXPECT_EQ(fromRawValue<Capability>(row.rawValue), row.capability);
    }
}

TEST(CapabilityCatalogue, KnowsNoOtherNames) {
    for (const auto name :
         {"", "Files.list", "files.list ", "calendar.read", "reminders.read", "permissions.get", "files"})
        EXPECT_FALSE(fromRawValue<Capability>(name)) << name;
    EXPECT_FALSE(fromRawValue<Group>("Calendar"));
    EXPECT_FALSE(fromRawValue<Section>("fileaccess"));
}

TEST(CapabilityCatalogue, HasNineGroupsAndSixteenSections) {
    EXPECT_EQ(title(Group::calendar), "Calendar");
    EXPECT_EQ(title(Group::locationMaps), "Location & Maps");
    EXPECT_EQ(rawValue(Group::locationMaps), "locationMaps");
    EXPECT_EQ(title(Section::events), "Event permissions");
    EXPECT_EQ(title(Section::fileAccess), "Reading and browsing");
    EXPECT_EQ(title(Section::maps), "Map permissions");
    for (const auto group : allCapabilityGroups)
        EXPECT_EQ(fromRawValue<Group>(rawValue(group)), group);
    std::set<std::string_view> names;
    for (const auto section : allCapabilitySections) {
        EXPECT_EQ(fromRawValue<Section>(rawValue(section)), section);
        names.insert(rawValue(section));
    }
    EXPECT_EQ(names.size(), capabilitySectionCount);
}

} // namespace
} // namespace bridge
