#include "adapters/jsonfile/preferred_secure_store.h"
#include "adapters/musicapp/player_music_library.h"
#include "adapters/xdg/home_trash.h"
#include "adapters/xdg/xdg_autostart.h"
#include "adapters/xdg/xdg_paths.h"
#include "app/embedded_ports.h"
#include "app/helper_program.h"
#include "app/location_managers.h"
#include "app/maps.h"
#include "app/music_players.h"
#include "app/platform.h"
#include "app/script_applications.h"
#include "app/service_names.h"
#include "base/log.h"
#ifdef HAVE_EDS
#include "adapters/eds/eds_contact_store.h"
#include "adapters/eds/eds_event_store.h"
#endif
#ifdef HAVE_GIO
#include "adapters/gio/gio_trash.h"
#endif
#ifdef HAVE_SECRET
#include "adapters/secretservice/secret_service_store.h"
#endif

namespace bridge {

namespace {

Task<std::unique_ptr<SecureStore>> openKeyring([[maybe_unused]] EventLoop* loop) {
#ifdef HAVE_SECRET
    auto keyring = co_await SecretServiceStore::open(*loop);
    co_return keyring;
#else
    co_return nullptr;
#endif
}

std::unique_ptr<Trash> openTrash(const XdgPaths& paths) {
#ifdef HAVE_GIO
    return std::make_unique<GioTrash>(HomeTrash(paths.homeTrash()));
#else
    return std::make_unique<HomeTrash>(paths.homeTrash());
#endif
}

} // namespace

std::string userProfileFolder() {
    return XdgPaths().dataHome + "/brindlefox-apple-bridge";
}

std::string userServicesFile() {
    return XdgPaths().configHome + "/brindlefox-apple-bridge/" + profile::services;
}

std::unique_ptr<EventStore> openCalendarService([[maybe_unused]] EventLoop& loop) {
#ifdef HAVE_EDS
    return loop.runUntilDone(EdsEventStore::open(loop));
#else
    return nullptr;
#endif
}

std::unique_ptr<ContactStore> openContactService([[maybe_unused]] EventLoop& loop) {
#ifdef HAVE_EDS
    return loop.runUntilDone(EdsContactStore::open(loop));
#else
    return nullptr;
#endif
}

Platform openDesktopPlatform(EventLoop& loop, std::unique_ptr<ConsentPrompt> prompt) {
    auto lock = InstanceLock::takeOfProfile(userProfileFolder());
    auto platform = openEmbeddedPorts(loop, userProfileFolder(), std::move(prompt));
    platform.profileLock = std::move(lock);
    platform.secureStore =
        std::make_unique<PreferredSecureStore>([&loop] { return openKeyring(&loop); }, std::move(platform.secureStore));
    if (auto service = openCalendarService(loop)) platform.eventStore = std::move(service);
    if (auto service = openContactService(loop)) platform.contactStore = std::move(service);
    platform.trash = openTrash(XdgPaths());
    const auto folder = userProfileFolder() + '/';
    const auto player = openUsersMusicPlayer(folder + profile::musicPlayer);
    platform.musicLibrary = std::make_unique<musicapp::PlayerMusicLibrary>(loop, player);
    auto applications = std::make_unique<ScriptApplications>(loop, folder + profile::office, player);
    nameScriptedServices(platform, *applications, player);
    platform.scriptEngine = std::move(applications);
    platform.loginItem = std::make_unique<XdgAutostart>(ownProgram(), std::vector<std::string>{"--background"});
    platform.privacySettings = std::make_unique<DesktopSettings>();
    const auto services = readUsersServices(userServicesFile());
    platform.locationManager = openUsersLocation(loop, platform, services);
    openMaps(loop, platform, services.settings);
    log::note("Calendars and reminders are those of " + platform.eventStore->description() + ".");
    log::note("Contacts are those of " + platform.contactStore->description() + ".");
    log::note("The location comes from " + platform.locationManager->description() + ".");
    log::note("Places come from " + platform.localSearch->description() + ".");
    log::note("Directions come from " + platform.directions->description() + ".");
    return platform;
}

} // namespace bridge
