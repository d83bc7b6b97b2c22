#pragma once

#include "platform/event_store.h"

namespace bridge {

inline constexpr auto serverName = "Evolution Data Server";
inline constexpr auto registryName = "org.gnome.evolution.dataserver.Sources5";
inline constexpr auto calendarFactoryName = "org.gnome.evolution.dataserver.Calendar8";
inline constexpr auto bookFactoryName = "org.gnome.evolution.dataserver.AddressBook10";

// The account of this computer, under the identifier that the registry gives to it.
inline constexpr auto localAccount = "local-stub";

// Groups of a source's key file.
inline constexpr auto collectionExtension = "Collection";
inline constexpr auto bookExtension = "Address Book";
inline const char* extensionOf(EntityType type) {
    return type == EntityType::event ? "Calendar" : "Task List";
}

} // namespace bridge
