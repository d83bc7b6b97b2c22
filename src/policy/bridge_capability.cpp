#include "policy/bridge_capability.h"

#include <algorithm>

namespace bridge {

namespace {

using Group = BridgeCapabilityGroup;
using Section = BridgeCapabilitySection;

struct GroupRow {
    std::string_view rawValue, title;
};
constexpr std::array<GroupRow, capabilityGroupCount> groups{{
    {"calendar", "Calendar"},
    {"reminders", "Reminders"},
    {"contacts", "Contacts"},
    {"music", "Music"},
    {"files", "Files"},
    {"pages", "Pages"},
    {"numbers", "Numbers"},
    {"keynote", "Keynote"},
    {"locationMaps", "Location & Maps"},
}};

struct SectionRow {
    std::string_view rawValue, title;
    Group group;
};
constexpr std::array<SectionRow, capabilitySectionCount> sections{{
    {"events", "Event permissions", Group::calendar},
    {"calendars", "Calendar permissions", Group::calendar},
    {"reminderItems", "Reminder permissions", Group::reminders},
    {"reminderLists", "List permissions", Group::reminders},
    {"contacts", "Contact permissions", Group::contacts},
    {"contactGroups", "Group permissions", Group::contacts},
    {"musicLibrary", "Library permissions", Group::music},
    {"playlists", "Playlist permissions", Group::music},
    {"playback", "Playback permissions", Group::music},
    {"fileAccess", "Reading and browsing", Group::files},
    {"fileChanges", "File changes", Group::files},
    {"pagesDocuments", "Document permissions", Group::pages},
    {"numbersSpreadsheets", "Spreadsheet permissions", Group::numbers},
    {"keynotePresentations", "Presentation permissions", Group::keynote},
    {"location", "Location permissions", Group::locationMaps},
    {"maps", "Map permissions", Group::locationMaps},
}};

struct CapabilityRow {
    std::string_view rawValue, title;
    Section section;
};
constexpr std::array<CapabilityRow, capabilityCount> capabilities{{
    {"calendar.events.read", "Read events", Section::events},
    {"calendar.events.create", "Create events", Section::events},
    {"calendar.events.update", "Edit events", Section::events},
    {"calendar.events.delete", "Delete events", Section::events},
    {"calendar.calendars.read", "Read calendars", Section::calendars},
    {"calendar.calendars.create", "Create calendars", Section::calendars},
    {"calendar.calendars.update", "Rename calendars", Section::calendars},
    {"calendar.calendars.delete", "Delete calendars", Section::calendars},
    {"reminders.items.read", "Read reminders", Section::reminderItems},
    {"reminders.items.create", "Create reminders", Section::reminderItems},
    {"reminders.items.update", "Edit and complete reminders", Section::reminderItems},
    {"reminders.items.delete", "Delete reminders", Section::reminderItems},
    {"reminders.lists.read", "Read lists", Section::reminderLists},
    {"reminders.lists.create", "Create lists", Section::reminderLists},
    {"reminders.lists.update", "Rename lists", Section::reminderLists},
    {"reminders.lists.delete", "Delete lists", Section::reminderLists},
    {"contacts.read", "Read contacts", Section::contacts},
    {"contacts.create", "Create contacts", Section::contacts},
    {"contacts.update", "Edit contacts", Section::contacts},
    {"contacts.delete", "Delete contacts", Section::contacts},
    {"contacts.groups.read", "Read groups", Section::contactGroups},
    {"contacts.groups.create", "Create groups", Section::contactGroups},
    {"contacts.groups.update", "Change group membership", Section::contactGroups},
    {"contacts.groups.delete", "Delete groups", Section::contactGroups},
    {"music.library.read", "Search the music library", Section::musicLibrary},
    {"music.playlists.read", "Read playlists", Section::playlists},
    {"music.playlists.create", "Create playlists", Section::playlists},
    {"music.playlists.update", "Add songs to playlists", Section::playlists},
    {"music.playlists.delete", "Delete playlists", Section::playlists},
    {"music.playback", "Control playback", Section::playback},
    {"files.list", "List files and folders", Section::fileAccess},
    {"files.read", "Read text files", Section::fileAccess},
    {"files.create", "Create files and folders", Section::fileChanges},
    {"files.update", "Overwrite and move files", Section::fileChanges},
    {"files.delete", "Delete files and folders", Section::fileChanges},
    {"iwork.pages.read", "Read documents", Section::pagesDocuments},
    {"iwork.pages.create", "Create documents", Section::pagesDocuments},
    {"iwork.pages.export", "Export documents", Section::pagesDocuments},
    {"iwork.numbers.read", "Read spreadsheets", Section::numbersSpreadsheets},
    {"iwork.numbers.create", "Create spreadsheets", Section::numbersSpreadsheets},
    {"iwork.numbers.update", "Edit spreadsheets", Section::numbersSpreadsheets},
    {"iwork.numbers.export", "Export spreadsheets", Section::numbersSpreadsheets},
    {"iwork.keynote.create", "Create presentations", Section::keynotePresentations},
    {"iwork.keynote.export", "Export presentations", Section::keynotePresentations},
    {"location.current", "Read current location", Section::location},
    {"maps.places.search", "Search places", Section::maps},
    {"maps.directions", "Calculate directions", Section::maps},
}};

const GroupRow& row(Group group) {
    return groups[static_cast<size_t>(group)];
}
const SectionRow& row(Section section) {
    return sections[static_cast<size_t>(section)];
}
const CapabilityRow& row(BridgeCapability capability) {
    return capabilities[static_cast<size_t>(capability)];
}

template <typename E, typename Rows> std::optional<E> find(const Rows& rows, std::string_view text) {
    const auto found =
        std::find_if(rows.begin(), rows.end(), [&](const auto& candidate) { return candidate.rawValue == text; });
    if (found == rows.end()) return std::nullopt;
    return static_cast<E>(found - rows.begin());
}

} // namespace

std::string_view rawValue(BridgeCapability capability) {
    return row(capability).rawValue;
}
std::string_view rawValue(BridgeCapabilityGroup group) {
    return row(group).rawValue;
}
std::string_view rawValue(BridgeCapabilitySection section) {
    return row(section).rawValue;
}

std::string_view title(BridgeCapability capability) {
    return row(capability).title;
}
std::string_view title(BridgeCapabilityGroup group) {
    return row(group).title;
}
std::string_view title(BridgeCapabilitySection section) {
    return row(section).title;
}

BridgeCapabilityGroup groupOf(BridgeCapability capability) {
    return groupOf(sectionOf(capability));
}
BridgeCapabilityGroup groupOf(BridgeCapabilitySection section) {
    return row(section).group;
}
BridgeCapabilitySection sectionOf(BridgeCapability capability) {
    return row(capability).section;
}

template <> std::optional<BridgeCapability> fromRawValue(std::string_view text) {
    return find<BridgeCapability>(capabilities, text);
}
template <> std::optional<BridgeCapabilityGroup> fromRawValue(std::string_view text) {
    return find<BridgeCapabilityGroup>(groups, text);
}
template <> std::optional<BridgeCapabilitySection> fromRawValue(std::string_view text) {
    return find<BridgeCapabilitySection>(sections, text);
}

} // namespace bridge
