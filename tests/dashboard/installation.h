#pragma once

#include "adapters/jsonfile/consent_file.h"
#include "app/bridge_model.h"
#include "app/dashboard/dashboard.h"
#include "base/platform_error.h"
#include "tests/base/gate.h"
#include "tests/fakes/sample_event_store.h"
#include "tests/fakes/scripted_authorization.h"
#include "tests/fakes/scripted_http_client.h"
#include "tests/support/temporary_folder.h"

namespace bridge {

// A login item that does as it is told.
class SwitchedLoginItem : public LoginItem {
public:
    LoginItemStatus now = LoginItemStatus::notRegistered;
    std::string failure; // of the next calls, while it is set
    int settingsOpened = 0;

    LoginItemStatus status() const override { return now; }
    void registerItem() override { become(LoginItemStatus::enabled); }
    void unregisterItem() override { become(LoginItemStatus::notRegistered); }
    void openLoginItemsSettings() override { ++settingsOpened; }

private:
    void become(LoginItemStatus status) {
        if (!failure.empty()) throw PlatformError(failure);
        now = status;
    }
};

class CountedPrivacySettings : public PrivacySettings {
public:
    int opened = 0;
    std::string failure; // of the next calls, while it is set

    void open() override {
        ++opened;
        if (!failure.empty()) throw PlatformError(failure);
    }
};

// A folder chooser that stays open until the test answers.
class HeldFolderChooser : public FolderChooser {
public:
    Gate answered;
    std::optional<std::string> answer;
    std::string failure; // of the next calls, while it is set
    std::vector<FolderQuestion> questions;

    Task<std::optional<std::string>> choose(FolderQuestion question) override {
        questions.push_back(std::move(question));
        co_await answered.opened();
        if (!failure.empty()) throw PlatformError(failure);
        co_return answer;
    }
};

// The bridge of a user whose calendars are in memory and whose Agent Server says what the test wrote down, with the
// dashboard on it. Everything is asked for, nothing is enabled. The server is not started.
class DashboardInstallation {
public:
    DashboardInstallation() : platform(openEmbeddedPlatform(loop, folder.path(), std::make_unique<ConsentQuestion>())) {
        consent = dynamic_cast<ConsentQuestion*>(platform.consentPrompt.get());
        authorization = dynamic_cast<ConsentFile*>(platform.authorization.get());
        calendars = put(platform.eventStore, std::make_unique<SampleEventStore>());
        agentServer = put(platform.httpClient, std::make_unique<ScriptedHTTPClient>());
        chooser = put(platform.folderChooser, std::make_unique<HeldFolderChooser>());
        login = put(platform.loginItem, std::make_unique<SwitchedLoginItem>());
        privacySettings = put(platform.privacySettings, std::make_unique<CountedPrivacySettings>());
        platform.services[BridgeCapabilityGroup::music] = [] { return "MPD"; };
    }

    // Puts the bridge together and reads everything, as at the start of the program.
    void assemble() {
        policy = std::make_unique<BridgeCapabilityPolicy>(*platform.defaults);
        model = std::make_unique<BridgeModel>(loop, platform, *policy);
        loop.runUntilDone(model->refresh());
        dashboard = std::make_unique<Dashboard>(*model, *consent, QDBusConnection("none"));
    }

    void grantEverything() {
        for (const auto service : {PrivacyService::calendar, PrivacyService::reminders, PrivacyService::contacts,
                                   PrivacyService::music, PrivacyService::location})
            authorization->setStatus(service, 3);
    }

    // Puts before the calendars a store that the test steps into.
    template <typename Watching> Watching* watchCalendars() {
        realCalendars = std::move(platform.eventStore);
        return put(platform.eventStore, std::make_unique<Watching>(*realCalendars));
    }
    // From now on they are the desktop's, as where it has the switches.
    ScriptedAuthorization* takePermissionsFromTheDesktop() {
        ownAnswers = std::move(platform.authorization);
        return put(platform.authorization, std::make_unique<ScriptedAuthorization>());
    }

    TemporaryFolder folder;
    EventLoop loop;
    std::unique_ptr<EventStore> realCalendars;
    std::unique_ptr<Authorization> ownAnswers;
    Platform platform; // uses all of the above
    ConsentQuestion* consent;
    ConsentFile* authorization;
    SampleEventStore* calendars;
    ScriptedHTTPClient* agentServer;
    HeldFolderChooser* chooser;
    SwitchedLoginItem* login;
    CountedPrivacySettings* privacySettings;
    std::unique_ptr<BridgeCapabilityPolicy> policy;
    std::unique_ptr<BridgeModel> model;
    std::unique_ptr<Dashboard> dashboard;

private:
    template <typename Port, typename Fake> static Fake* put(std::unique_ptr<Port>& place, std::unique_ptr<Fake> fake) {
        auto* seen = fake.get();
        place = std::move(fake);
        return seen;
    }
};

} // namespace bridge
