#include "profile.h"

#include "adapters/jsonfile/consent_file.h"
#include "app/import/file_import.h"
#include "app/import/import_report.h"
#include "base/make_folders.h"
#include "sample_calendars.h"
#include "sample_contacts.h"
#include "sample_data.h"
#include "sample_music.h"
#include "tools/agent_server/stand_in_agent_server.h"

#include <cstdio>
#include <stdlib.h>

namespace bridge::playground {

namespace {

void choose(BridgeCapabilityPolicy& policy, const Choice& choice) {
    if (choice.kind == Choice::Kind::keep) return;
    for (const auto group : allCapabilityGroups)
        policy.setGroupEnabled(group, choice.kind == Choice::Kind::all);
    for (const auto& name : choice.names)
        policy.setEnabled(*fromRawValue<BridgeCapability>(name), true);
}

void answerForTheUser(ConsentFile& consent, const Options& options) {
    for (const auto& [service, status] : options.permissions)
        consent.setStatus(service, status);
}

// Whether a file is there that the bridge makes when it first needs it.
struct PresentFiles {
    explicit PresentFiles(const std::filesystem::path& folder)
        : calendars(std::filesystem::exists(folder / profile::calendars)),
          contacts(std::filesystem::exists(folder / profile::contacts)) {}

    bool calendars;
    bool contacts;
};

// Into the files that the bridge uses, as the user's own tools do.
void fillStores(EventLoop& loop, Platform& platform, const std::filesystem::path& folder, const PresentFiles& present,
                const std::vector<std::string>& imports) {
    SqliteEventStore calendars(folder / profile::calendars, *platform.clock);
    SqliteContactStore contacts(folder / profile::contacts, *platform.clock);
    if (!present.calendars) loop.runUntilDone(makeSampleCalendars(calendars, platform.clock->now()));
    if (!present.contacts) makeSampleContacts(contacts);
    for (const auto& name : imports) {
        const auto file = loop.runUntilDone(importFile({calendars, contacts}, name, [](const std::string&) {}));
        std::fputs(describe(file).c_str(), stderr);
        if (file.failure) throw std::runtime_error(name + " could not be imported.");
    }
}

// Only who has access can choose, so the user has it meanwhile whatever the options say.
void authorizeCalendars(EventLoop& loop, AppleDataBridge& bridge, ConsentFile& consent, const Options& options) {
    constexpr int granted = 3;
    if (options.calendars.kind != Choice::Kind::keep) {
        consent.setStatus(PrivacyService::calendar, granted);
        loop.runUntilDone(bridge.setAllCalendars(options.calendars.kind == Choice::Kind::all));
    }
    if (options.reminderLists.kind != Choice::Kind::keep) {
        consent.setStatus(PrivacyService::reminders, granted);
        loop.runUntilDone(bridge.setAllReminderLists(options.reminderLists.kind == Choice::Kind::all));
    }
}

void pair(EventLoop& loop, BridgeModel& model) {
    StandInAgentServer agentServer;
    model.agentServerURL.set(agentServer.url());
    loop.runUntilDone(model.pair(agentServer.issueCode()));
    if (!model.isPaired.get()) throw std::runtime_error(*model.pairingStatusMessage.get());
}

} // namespace

Profile::Profile(const std::optional<std::string>& keptFolder) : m_isKept(keptFolder.has_value()) {
    if (m_isKept) {
        m_folder = std::filesystem::absolute(*keptFolder).lexically_normal();
        if (!m_folder.has_filename()) m_folder = m_folder.parent_path(); // was written with a slash at its end
        makeFolders(m_folder, "The profile could not be made");
    } else {
        auto pattern = (std::filesystem::temp_directory_path() / "brindlefox-try-XXXXXX").string();
        if (!mkdtemp(pattern.data())) throw std::runtime_error("No temporary folder could be made in " + pattern);
        m_folder = pattern;
    }
}

Profile::~Profile() {
    std::error_code ignored;
    if (!m_isKept) std::filesystem::remove_all(m_folder, ignored);
}

std::string prepare(EventLoop& loop, BridgeModel& model, Platform& platform, const Options& options,
                    const std::filesystem::path& folder) {
    const PresentFiles present(folder); // asked before the bridge makes them
    // First of all: when the port is taken, another bridge may be using this very profile.
    loop.runUntilDone(model.start());
    if (const auto* failure = std::get_if<ServerFailed>(&model.httpServer.state.get()))
        throw std::runtime_error(failure->message);

    fillStores(loop, platform, folder, present, options.imports);
    if (!std::filesystem::exists(folder / profile::music)) makeSampleMusic(folder / profile::music);
    auto& consent = dynamic_cast<ConsentFile&>(*platform.authorization);
    authorizeCalendars(loop, model.dataBridge, consent, options);
    answerForTheUser(consent, options);
    if (!platform.defaults->contains(FileDataBridge::rootsKey)) {
        const auto documents = folder / "Documents";
        makeSampleDocuments(documents);
        if (!model.files.addFolder(documents)) throw std::runtime_error("The sample folder could not be authorized.");
    }
    choose(model.capabilityPolicy, options.capabilities);
    if (options.unpaired)
        loop.runUntilDone(model.unpair());
    else if (!model.isPaired.get())
        pair(loop, model);
    loop.runUntilDone(model.refresh());
    return model.pairingStore.credential().value_or("");
}

} // namespace bridge::playground
