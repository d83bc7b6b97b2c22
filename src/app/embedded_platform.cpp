#include "adapters/curl/curl_http_client.h"
#include "adapters/jsonfile/consent_file.h"
#include "adapters/jsonfile/file_secure_store.h"
#include "adapters/jsonfile/json_file_user_defaults.h"
#include "adapters/musicapp/player_music_library.h"
#include "adapters/posix/loop_alarm_clock.h"
#include "adapters/posix/posix_bookmarks.h"
#include "adapters/posix/system_clock.h"
#include "adapters/sqlite/sqlite_contact_store.h"
#include "adapters/sqlite/sqlite_event_store.h"
#include "adapters/xdg/home_trash.h"
#include "app/build_info.h"
#include "app/embedded_ports.h"
#include "app/location_managers.h"
#include "app/maps.h"
#include "app/music_players.h"
#include "app/no_consent_prompt.h"
#include "app/no_folder_chooser.h"
#include "app/no_login_item.h"
#include "app/no_privacy_settings.h"
#include "app/platform.h"
#include "app/script_applications.h"
#include "app/service_names.h"
#include "app/unconfigured_music_catalog.h"

namespace bridge {

Platform openEmbeddedPorts(EventLoop& loop, const std::string& folder, std::unique_ptr<ConsentPrompt> prompt) {
    const auto file = [&](const char* name) { return folder + "/" + name; };
    Platform platform;
    platform.defaults = std::make_unique<JSONFileUserDefaults>(file(profile::defaults));
    platform.secureStore = std::make_unique<FileSecureStore>(file(profile::credential));
    platform.httpClient = std::make_unique<CurlHTTPClient>(loop);
    platform.folderChooser = std::make_unique<NoFolderChooser>();
    platform.bookmarks = std::make_unique<PosixBookmarks>();
    platform.trash = std::make_unique<HomeTrash>(file(profile::trash));
    platform.consentPrompt = std::move(prompt);
    if (!platform.consentPrompt) platform.consentPrompt = std::make_unique<NoConsentPrompt>();
    platform.authorization = std::make_unique<ConsentFile>(file(profile::consent), *platform.consentPrompt);
    platform.application = std::make_unique<BuildInfo>();
    platform.clock = std::make_unique<SystemClock>();
    platform.alarmClock = std::make_unique<LoopAlarmClock>(loop);
    platform.eventStore = std::make_unique<SqliteEventStore>(file(profile::calendars), *platform.clock);
    platform.contactStore = std::make_unique<SqliteContactStore>(file(profile::contacts), *platform.clock);
    const auto player = openPrivateMusicPlayer(file(profile::musicPlayer), file(profile::music));
    platform.musicLibrary = std::make_unique<musicapp::PlayerMusicLibrary>(loop, player);
    platform.musicCatalog = std::make_unique<UnconfiguredMusicCatalog>();
    auto applications = std::make_unique<ScriptApplications>(loop, file(profile::office), player);
    nameScriptedServices(platform, *applications, player);
    platform.scriptEngine = std::move(applications);
    platform.loginItem = std::make_unique<NoLoginItem>();
    platform.privacySettings = std::make_unique<NoPrivacySettings>();
    return platform;
}

Platform openEmbeddedPlatform(EventLoop& loop, const std::string& folder, std::unique_ptr<ConsentPrompt> prompt) {
    auto platform = openEmbeddedPorts(loop, folder, std::move(prompt));
    const auto services = readUsersServices(folder + '/' + profile::services);
    platform.locationManager = openFixedLocation(loop, platform, services);
    openMaps(loop, platform, services.settings);
    return platform;
}

} // namespace bridge
