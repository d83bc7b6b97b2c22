#include "adapters/location/consented_location_manager.h"
#include "adapters/location/fixed_place.h"
#include "adapters/posix/posix_bookmarks.h"
#include "adapters/xdg/home_trash.h"
#include "app/unconfigured_music_catalog.h"
#include "base/event_loop.h"
#include "bridges/calendar/apple_data_bridge.h"
#include "bridges/contacts/contact_data_bridge.h"
#include "bridges/files/file_data_bridge.h"
#include "bridges/iwork/iwork_automation_bridge.h"
#include "bridges/location/location_data_bridge.h"
#include "bridges/music/music_data_bridge.h"
#include "platform/application_info.h"
#include "policy/bridge_capability_policy.h"
#include "policy/bridge_pairing_store.h"
#include "server/bridge_router.h"
#include "server/permission_snapshot.h"
#include "tests/fakes/manual_alarm_clock.h"
#include "tests/fakes/memory_contact_store.h"
#include "tests/fakes/memory_folder_chooser.h"
#include "tests/fakes/memory_music_library.h"
#include "tests/fakes/memory_secure_store.h"
#include "tests/fakes/memory_user_defaults.h"
#include "tests/fakes/sample_event_store.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_directions.h"
#include "tests/fakes/scripted_http_client.h"
#include "tests/fakes/scripted_local_search.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

namespace fs = std::filesystem;

class NoVersion : public ApplicationInfo {
public:
    std::optional<std::string> shortVersion() const override { return std::nullopt; }
};

class StandingClock : public Clock {
public:
    Date now() const override { return {1786706921}; }
    std::chrono::milliseconds uptime() const override { return {}; }
};

// One authorized folder with the id "root", beside a file that no request may touch.
class Folders {
public:
    Folders() { reset(); }

    // The folder itself stays: another one in its place would no longer be the authorized one.
    void reset() {
        fs::remove_all(trash);
        fs::create_directories(root);
        const std::vector<fs::path> items(fs::directory_iterator(root), {});
        for (const auto& item : items)
            fs::remove_all(item);
        fs::create_directory(root / "Notes");
        putFile(root / "Welcome.txt", "Grüße\n");
        putFile(root / "Notes/Ideas.txt", "Paint the shed.\n");
        for (const auto* name : {"Plan.pages", "Plan.numbers", "Plan.key"})
            putFile(root / name, "document");
        putFile(outside, "secret");
        fs::create_symlink("../outside.txt", root / "out");
        fs::create_symlink("..", root / "up");
        fs::create_symlink("Notes", root / "in");
        fs::create_symlink("missing/../up", root / "ghost");
    }
    void mustHaveKeptTheOutside() const {
        must(getFile(outside) == "secret");
        for (const auto& entry : fs::directory_iterator(m_folder.path()))
            must(entry.path() == root || entry.path() == outside || entry.path() == trash);
    }

private:
    TemporaryFolder m_folder;

public:
    const fs::path root = m_folder / "Documents";
    const fs::path outside = m_folder / "outside.txt";
    const fs::path trash = m_folder / "Trash";
};

// Runs nothing. No script that comes here names a file outside the folder.
class CheckingEngine : public ScriptEngine {
public:
    explicit CheckingEngine(const fs::path& root) : m_root(root) {}

    Task<TypedAppleScriptValue> run(std::string source) override {
        must(source.starts_with("with timeout of 30 seconds\n    tell application \""));
        must(source.ends_with("\nend tell\nend timeout"));
        // In a request's own text a backslash stands before the quotation mark.
        constexpr std::string_view file = "POSIX file \"";
        for (size_t at = source.find(file); at != std::string::npos; at = source.find(file, at + 1))
            must(source.compare(at + file.size(), m_root.size() + 1, m_root + "/") == 0);
        co_return {};
    }
    bool isRunning(const std::string&) override { return false; }

private:
    const std::string m_root;
};

// The bridge behind its router: paired, every switch on.
class Bridge {
public:
    Bridge() {
        m_loop.runUntilDone(m_secrets.replace(BridgePairingStore::credentialItem(), "credential"));
        m_loop.runUntilDone(m_pairing.load());
        for (const auto group : allCapabilityGroups)
            m_policy.setGroupEnabled(group, true);
        must(m_files.roots.get().size() == 1);
        MusicLibraryContents music;
        music.items = {{0x1A, "Café \"Noir\" \\", "Ana"}, {0x2B, "Harvest", ""}};
        music.playlists = {{0x77, "Morning", {0x1A}}};
        m_library.library = std::make_shared<const MusicLibraryContents>(std::move(music));
        m_localSearch.found = {{"Café \"Noir\"", {52.5, 13.4}, "Alley 3", "555-0100", "https://cafe.example.org"}, {}};
        m_mapDirections.routes = {{"Alley", 300, 240, {"Turn \"left\".", ""}}};
        resetCalendars();
        resetContacts();
    }

    BridgeResponse execute(std::string_view body) {
        ParsedHTTPRequest request;
        request.method = "POST";
        request.path = "/v1/execute";
        request.headers = {{"authorization", "Bearer credential"}};
        request.body = body;
        return m_loop.runUntilDone(m_router.response(std::move(request)));
    }

    // Calendars "personal" and "team" with the event "event", lists "errands" and "projects" with the reminder
    // "reminder", all allowed; some others can't be changed.
    void resetCalendars() {
        m_store = SampleEventStore();
        CalendarEvent event;
        event.identifier = "event";
        event.calendarID = "personal";
        event.endDate = {3600};
        m_store.allEvents = {event};
        Reminder reminder;
        reminder.identifier = "reminder";
        reminder.listID = "errands";
        m_store.allReminders = {reminder};
        m_loop.runUntilDone(m_dataBridge.setAllCalendars(true));
        m_loop.runUntilDone(m_dataBridge.setAllReminderLists(true));
    }

    // The contact "contact-1", and the group "group-2" that has it.
    void resetContacts() {
        m_contactStore = MemoryContactStore();
        Contact contact;
        contact.givenName = "José";
        contact.phoneNumbers = {{"home", "555-0100"}};
        contact.birthday = {.month = 2, .day = 29};
        const auto identifier = m_contactStore.put(contact);
        m_contactStore.putGroup("Friends", {identifier});
    }

    Folders folders;

private:
    struct SettingsWithAFolder : MemoryUserDefaults {
        SettingsWithAFolder(const fs::path& root, Bookmarks& bookmarks) {
            const std::vector<StoredFileRoot> stored{{"root", "Documents", {bookmarks.create(root)}}};
            setData("authorizedFileRoots.v1", encodeJSON(stored));
        }
    };

    EventLoop m_loop;
    PosixBookmarks m_bookmarks;
    SettingsWithAFolder m_defaults{folders.root, m_bookmarks};
    MemorySecureStore m_secrets;
    MemoryFolderChooser m_chooser;
    ScriptedHTTPClient m_client;
    HomeTrash m_trash{folders.trash};
    SampleEventStore m_store;
    MemoryContactStore m_contactStore;
    ScriptedAuthorization m_authorization;
    NoVersion m_application;
    StandingClock m_clock;
    BridgeCapabilityPolicy m_policy{m_defaults};
    BridgePairingStore m_pairing{m_defaults, m_secrets, m_client};
    FileDataBridge m_files{m_defaults, m_bookmarks, m_chooser, m_trash};
    AppleDataBridge m_dataBridge{m_store, m_authorization, m_defaults};
    ContactDataBridge m_contacts{m_contactStore, m_authorization};
    CheckingEngine m_engine{folders.root};
    IWorkAutomationBridge m_iwork{m_files, m_engine};
    MemoryMusicLibrary m_library;
    UnconfiguredMusicCatalog m_catalog;
    MusicDataBridge m_music{m_library, m_catalog, m_engine, m_authorization};
    ConsentedLocationManager m_manager{
        m_loop, m_authorization,
        std::make_unique<FixedPlace>(MapCoordinate{52.52, 13.405}, "services.json", "", m_clock)};
    ScriptedLocalSearch m_localSearch;
    ScriptedDirections m_mapDirections;
    ManualAlarmClock m_alarms;
    LocationDataBridge m_location{m_manager, m_localSearch, m_mapDirections, m_alarms};
    BridgeStatus m_status{m_authorization, m_application, m_policy, m_dataBridge, m_location, m_files};
    BridgeRouter m_router{BridgeSet(m_status, m_dataBridge, m_contacts, m_files, m_iwork, m_location, m_music),
                          m_policy, m_pairing, m_clock};
};

// What the bridge may answer to whoever is paired and has everything switched on.
constexpr std::array<std::string_view, 16> codes{
    "invalid_json",       "unsupported_operation", "malformed_request",      "confirmation_required",
    "permission_denied",  "calendar_not_found",    "event_not_found",        "list_not_found",
    "reminder_not_found", "resource_not_found",    "resource_access_denied", "capability_unavailable",
    "unsafe_path",        "operation_failed",      "outcome_unknown",        "invalid_date_range"};

void mustBeAnError(int status, const JSONValue& error) {
    must(error.object() && error.object()->size() == 2);
    const auto code = *error.object()->at("code").string();
    must(!error.object()->at("message").string()->empty());
    const bool denied = code == "permission_denied" || code == "resource_access_denied";
    const bool failed = code == "internal_error" || code == "encoding_error";
    must(status == (denied ? 403 : failed ? 500 : 400));
    must(failed || std::ranges::find(codes, code) != codes.end());
}

// The caller's own id, when the body is an envelope that was understood.
std::optional<std::string> requestIdOf(std::string_view body) {
    try {
        return decode<BridgeRequestEnvelope>(parseJSON(body)).requestId;
    } catch (const std::runtime_error&) {
        return std::nullopt;
    }
}

} // namespace

void fuzz(std::string_view input) {
    static Bridge bridge;
    const auto response = bridge.execute(input);
    const auto answer = parseJSON(response.body);
    const auto& members = *answer.object();
    must(!response.logName.empty());

    const auto id = members.find("requestId");
    const auto expected = requestIdOf(input);
    must(expected ? id != members.end() && *id->second.string() == *expected : id == members.end());
    must(*members.at("completedAt").string() == "2026-08-14T11:28:41Z");
    must(members.size() == (expected ? 3 : 2));
    if (response.status == 200)
        must(members.contains("result"));
    else
        mustBeAnError(response.status, members.at("error"));

    // Also a refused request may have come half-way.
    if (response.logName.starts_with("calendar.") || response.logName.starts_with("reminders."))
        bridge.resetCalendars();
    if (response.logName.starts_with("contacts.")) bridge.resetContacts();
    if (!response.logName.starts_with("files.") && !response.logName.starts_with("iwork.")) return;
    bridge.folders.mustHaveKeptTheOutside();
    if (response.logName != "files.list" && response.logName != "files.read_text") bridge.folders.reset();
}

} // namespace bridge
