#pragma once

#include "app/bridge_model.h"
#include "app/process.h"
#include "base/log.h"
#include "tests/fakes/manual_alarm_clock.h"
#include "tests/fakes/memory_music_library.h"
#include "tests/fakes/scripted_directions.h"
#include "tests/fakes/scripted_engine.h"
#include "tests/fakes/scripted_local_search.h"
#include "tests/fakes/scripted_location_manager.h"
#include "tests/fakes/scripted_music_catalog.h"
#include "tests/support/temporary_folder.h"

#include <fcntl.h>
#include <future>
#include <thread>

namespace bridge {

// The whole bridge on embedded adapters, serving on its real port from a thread of its own: paired, every switch on,
// one authorized folder. For the scripted applications, music, location and maps a test speaks itself.
class RunningBridge {
public:
    static constexpr const char* credential = "credential-of-the-tests";

    // What the user has answered to the questions for access.
    enum class Consent { notAsked, full };

    explicit RunningBridge(Consent consent = Consent::notAsked) : m_consent(consent) {
        if (consent == Consent::full)
            putFile(m_folder / profile::consent, R"({"calendar":3,"contacts":3,"music":3,"reminders":3})");
        std::promise<void> ready;
        auto isReady = ready.get_future();
        m_thread = std::thread([this, &ready] { serve(ready); });
        isReady.get();
    }
    ~RunningBridge() {
        m_loop->stop();
        m_thread.join();
    }
    RunningBridge(const RunningBridge&) = delete;
    RunningBridge& operator=(const RunningBridge&) = delete;

    const std::string& rootID() const { return m_rootID; }
    std::filesystem::path documents() const { return m_folder / "Documents"; }
    // Each line leaves at once, before its answer.
    std::string log() const { return getFile(m_folder / "log"); }
    std::filesystem::path trash() const { return m_folder / "Trash"; }

    // Runs `action(model)` on the bridge's thread and waits for its result.
    template <typename Action> auto onLoop(Action action) {
        std::packaged_task<std::invoke_result_t<Action, BridgeModel&>()> task([&] { return action(*m_model); });
        auto result = task.get_future();
        m_loop->post([&] { task(); });
        return result.get();
    }
    void enable(BridgeCapability capability, bool enabled) {
        onLoop([=](BridgeModel& model) { model.capabilityPolicy.setEnabled(capability, enabled); });
    }
    void enableAll(bool enabled) {
        onLoop([=](BridgeModel& model) {
            for (const auto group : allCapabilityGroups)
                model.capabilityPolicy.setGroupEnabled(group, enabled);
        });
    }
    // On the allow-lists, everything or nothing.
    void allowAll(bool authorized) {
        onLoop([=](BridgeModel& model) {
            auto calendars = model.setAllCalendars(authorized);
            auto lists = model.setAllReminderLists(authorized);
            calendars.start();
            lists.start();
            return calendars.done() && lists.done();
        });
    }
    // Only within onLoop().
    ScriptedEngine& engine() { return *m_engine; }
    MemoryMusicLibrary& musicLibrary() { return *m_musicLibrary; }
    ScriptedMusicCatalog& musicCatalog() { return *m_musicCatalog; }
    ScriptedLocationManager& locationManager() { return *m_locationManager; }
    ScriptedLocalSearch& localSearch() { return *m_localSearch; }
    ScriptedDirections& directions() { return *m_directions; }
    ManualAlarmClock& alarmClock() { return *m_alarmClock; }
    void unpair() {
        onLoop([](BridgeModel& model) {
            auto task = model.unpair();
            task.start();
            return task.done();
        });
    }

private:
    template <typename Fake, typename Port> static Fake& speakFor(std::unique_ptr<Port>& port) {
        auto fake = std::make_unique<Fake>();
        auto& seen = *fake;
        port = std::move(fake);
        return seen;
    }

    void serve(std::promise<void>& ready) {
        try {
            prepareProcess();
            const FileDescriptor logFile(
                open((m_folder / "log").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600));
            log::writeTo(logFile.get());
            EventLoop loop;
            auto platform = openEmbeddedPlatform(loop, m_folder.path());
            m_engine = &speakFor<ScriptedEngine>(platform.scriptEngine);
            m_musicLibrary = &speakFor<MemoryMusicLibrary>(platform.musicLibrary);
            m_musicCatalog = &speakFor<ScriptedMusicCatalog>(platform.musicCatalog);
            m_locationManager = &speakFor<ScriptedLocationManager>(platform.locationManager);
            m_locationManager->status = m_consent == Consent::full ? 3 : 0;
            m_localSearch = &speakFor<ScriptedLocalSearch>(platform.localSearch);
            m_directions = &speakFor<ScriptedDirections>(platform.directions);
            m_alarmClock = &speakFor<ManualAlarmClock>(platform.alarmClock);
            platform.services.clear(); // they ask those that have gone
            loop.runUntilDone(platform.secureStore->replace(BridgePairingStore::credentialItem(), credential));
            BridgeCapabilityPolicy policy(*platform.defaults);
            for (const auto group : allCapabilityGroups)
                policy.setGroupEnabled(group, true);
            BridgeModel model(loop, platform, policy);
            std::filesystem::create_directory(documents());
            m_rootID = model.files.addFolder(documents()).value().id;
            loop.runUntilDone(model.start());
            if (!std::holds_alternative<ServerListening>(model.httpServer.state.get()))
                throw std::runtime_error(std::get<ServerFailed>(model.httpServer.state.get()).message);
            m_loop = &loop;
            m_model = &model;
            ready.set_value();
            loop.run();
            log::writeTo(STDERR_FILENO);
        } catch (...) {
            ready.set_exception(std::current_exception());
        }
    }

    const Consent m_consent;
    TemporaryFolder m_folder;
    std::string m_rootID;
    EventLoop* m_loop = nullptr;
    BridgeModel* m_model = nullptr;
    ScriptedEngine* m_engine = nullptr;
    MemoryMusicLibrary* m_musicLibrary = nullptr;
    ScriptedMusicCatalog* m_musicCatalog = nullptr;
    ScriptedLocationManager* m_locationManager = nullptr;
    ScriptedLocalSearch* m_localSearch = nullptr;
    ScriptedDirections* m_directions = nullptr;
    ManualAlarmClock* m_alarmClock = nullptr;
    std::thread m_thread;
};

} // namespace bridge
