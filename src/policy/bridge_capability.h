#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>

namespace bridge {

// The catalogue of what the user can switch on, one switch for each kind of access. The order is the order in which
// people see them; raw values are the names on the wire and in storage, matched exactly.

enum class BridgeCapabilityGroup {
    calendar,
    reminders,
    contacts,
    music,
    files,
    pages,
    numbers,
    keynote,
    locationMaps,
};

enum class BridgeCapabilitySection {
    events,
    calendars,
    reminderItems,
    reminderLists,
    contacts,
    contactGroups,
    musicLibrary,
    playlists,
    playback,
    fileAccess,
    fileChanges,
    pagesDocuments,
    numbersSpreadsheets,
    keynotePresentations,
    location,
    maps,
};

enum class BridgeCapability {
    calendarEventsRead,
    calendarEventCreate,
    calendarEventUpdate,
    calendarEventDelete,
    calendarsRead,
    calendarCreate,
    calendarUpdate,
    calendarDelete,
    reminderItemsRead,
    reminderCreate,
    reminderUpdate,
    reminderDelete,
    reminderListsRead,
    reminderListCreate,
    reminderListUpdate,
    reminderListDelete,
    contactsRead,
    contactsCreate,
    contactsUpdate,
    contactsDelete,
    contactGroupsRead,
    contactGroupsCreate,
    contactGroupsUpdate,
    contactGroupsDelete,
    musicLibraryRead,
    musicPlaylistsRead,
    musicPlaylistsCreate,
    musicPlaylistsUpdate,
    musicPlaylistsDelete,
    musicPlayback,
    filesList,
    filesRead,
    filesCreate,
    filesUpdate,
    filesDelete,
    pagesRead,
    pagesCreate,
    pagesExport,
    numbersRead,
    numbersCreate,
    numbersUpdate,
    numbersExport,
    keynoteCreate,
    keynoteExport,
    currentLocation,
    placesSearch,
    directions,
};

constexpr size_t capabilityCount = 47;
constexpr size_t capabilityGroupCount = 9;
constexpr size_t capabilitySectionCount = 16;

// Every case of an enumeration in its fixed order.
template <typename E, size_t count> constexpr auto everyCase() {
    std::array<E, count> cases{};
    for (size_t index = 0; index < count; ++index)
        cases[index] = static_cast<E>(index);
    return cases;
}
constexpr auto allCapabilities = everyCase<BridgeCapability, capabilityCount>();
constexpr auto allCapabilityGroups = everyCase<BridgeCapabilityGroup, capabilityGroupCount>();
constexpr auto allCapabilitySections = everyCase<BridgeCapabilitySection, capabilitySectionCount>();

std::string_view rawValue(BridgeCapability capability);
std::string_view rawValue(BridgeCapabilityGroup group);
std::string_view rawValue(BridgeCapabilitySection section);

std::string_view title(BridgeCapability capability);
std::string_view title(BridgeCapabilityGroup group);
std::string_view title(BridgeCapabilitySection section);

BridgeCapabilityGroup groupOf(BridgeCapability capability);
BridgeCapabilityGroup groupOf(BridgeCapabilitySection section);
BridgeCapabilitySection sectionOf(BridgeCapability capability);

// `fromRawValue<BridgeCapability>("files.list")`; nothing for a text that is no raw value.
template <typename E> std::optional<E> fromRawValue(std::string_view text);
template <> std::optional<BridgeCapability> fromRawValue(std::string_view text);
template <> std::optional<BridgeCapabilityGroup> fromRawValue(std::string_view text);
template <> std::optional<BridgeCapabilitySection> fromRawValue(std::string_view text);

// On the wire a capability is its raw value.
inline std::string_view wireName(BridgeCapability capability) {
    return rawValue(capability);
}
inline std::optional<BridgeCapability> fromWireName(std::string_view name, std::type_identity<BridgeCapability>) {
    return fromRawValue<BridgeCapability>(name);
}
inline std::array<std::string_view, capabilityCount> wireNames(std::type_identity<BridgeCapability>) {
    std::array<std::string_view, capabilityCount> names;
    for (size_t index = 0; index < capabilityCount; ++index)
        names[index] = rawValue(allCapabilities[index]);
    return names;
}

} // namespace bridge
