#pragma once

#include "app/instance_lock.h"
#include "base/event_loop.h"
#include "platform/alarm_clock.h"
#include "platform/application_info.h"
#include "platform/bookmarks.h"
#include "platform/clock.h"
#include "platform/consent_prompt.h"
#include "platform/contact_store.h"
#include "platform/directions.h"
#include "platform/event_store.h"
#include "platform/folder_chooser.h"
#include "platform/http_client.h"
#include "platform/local_search.h"
#include "platform/location_manager.h"
#include "platform/login_item.h"
#include "platform/music_catalog.h"
#include "platform/music_library.h"
#include "platform/privacy_settings.h"
#include "platform/script_engine.h"
#include "platform/secure_store.h"
#include "platform/trash.h"
#include "platform/user_defaults.h"
#include "policy/bridge_capability.h"

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace bridge {

// Every port of this process with the adapter that stands behind it.
struct Platform {
    std::optional<InstanceLock> profileLock; // given back last
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<SecureStore> secureStore;
    std::unique_ptr<HTTPClient> httpClient;
    std::unique_ptr<FolderChooser> folderChooser;
    std::unique_ptr<Bookmarks> bookmarks;
    std::unique_ptr<Trash> trash;
    std::unique_ptr<ConsentPrompt> consentPrompt; // before what asks through it
    std::unique_ptr<Authorization> authorization;
    std::unique_ptr<ApplicationInfo> application;
    std::unique_ptr<Clock> clock;
    std::unique_ptr<AlarmClock> alarmClock;
    // After the clock that they look at.
    std::unique_ptr<EventStore> eventStore;
    std::unique_ptr<ContactStore> contactStore;
    std::unique_ptr<MusicLibrary> musicLibrary;
    std::unique_ptr<MusicCatalog> musicCatalog;
    std::unique_ptr<ScriptEngine> scriptEngine;
    std::unique_ptr<LocationManager> locationManager; // after the authorization that it heeds
    std::unique_ptr<HTTPClient> placesClient;         // before who asks through it
    std::unique_ptr<LocalSearch> localSearch;
    std::unique_ptr<HTTPClient> directionsClient; // likewise
    std::unique_ptr<Directions> directions;
    std::unique_ptr<LoginItem> loginItem;
    std::unique_ptr<PrivacySettings> privacySettings;

    // In words for the user: what serves a group whose port doesn't say so itself, or what has to be installed. Asked
    // at every refresh, since programs come and go; never slow. They ask the ports above: whoever exchanges one exchanges
    // its service, too.
    std::map<BridgeCapabilityGroup, std::function<std::string()>> services;
};

// What the embedded adapters call their files.
namespace profile {
constexpr const char* defaults = "defaults.json";
constexpr const char* credential = "credential.json";
constexpr const char* consent = "consent.json";
constexpr const char* services = "services.json";
constexpr const char* trash = "Trash";
constexpr const char* calendars = "calendars.db";
constexpr const char* contacts = "contacts.db";
constexpr const char* music = "Music";     // of the profile itself
constexpr const char* musicPlayer = "MPD"; // its database and playlists
constexpr const char* office = "Office";   // copies of open documents, and nothing that lasts
} // namespace profile

// The folder of the logged-in user's profile. Nothing is made.
std::string userProfileFolder();

// Where the logged-in user says which services to use.
std::string userServicesFile();

// The calendars of the desktop, and its address books; nothing where it has no service for them.
std::unique_ptr<EventStore> openCalendarService(EventLoop& loop);
std::unique_ptr<ContactStore> openContactService(EventLoop& loop);

// The adapters that need no service of the desktop, with every file below `folder`. Without a prompt nobody can be
// asked for access.
Platform openEmbeddedPlatform(EventLoop& loop, const std::string& folder,
                              std::unique_ptr<ConsentPrompt> prompt = nullptr);

// For the logged-in user: desktop adapters where their service is there, embedded ones otherwise; the log says which.
// Throws PlatformError when another bridge uses his profile.
Platform openDesktopPlatform(EventLoop& loop, std::unique_ptr<ConsentPrompt> prompt = nullptr);

} // namespace bridge
