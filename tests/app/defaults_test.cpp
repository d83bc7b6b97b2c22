#include "tests/app/installation.h"

#include <gmock/gmock.h>
#include <regex>
#include <sys/stat.h>

namespace bridge {
namespace {

class Defaults : public InstallationTest {
protected:
    std::vector<std::string> storedKeys() const {
        std::vector<std::string> keys;
        for (const auto& [key, value] : storedDefaults())
            keys.push_back(key);
        return keys;
    }
};

TEST_F(Defaults, OfAFreshInstallationAreItsNameAndNoCapability) {
    run->start();
    EXPECT_EQ(storedKeys(),
              (std::vector<std::string>{"agentPairing.installationID", "appleBridge.enabledCapabilities.v1"}));
    const auto stored = storedDefaults();
    EXPECT_TRUE(std::regex_match(*stored.at("agentPairing.installationID").string(),
                                 std::regex("[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}")));
    EXPECT_TRUE(stored.at("appleBridge.enabledCapabilities.v1").array()->empty());
}

TEST_F(Defaults, HoldWhatTheUserDid) {
    run->start();
    run->pair(agentServer);
    run->policy.setEnabled(BridgeCapability::placesSearch, true);
    run->policy.setEnabled(BridgeCapability::filesList, true);
    std::filesystem::create_directory(folder / "Documents");
    const auto root = model().files.addFolder(folder.file("Documents")).value();

    EXPECT_EQ(storedKeys(), (std::vector<std::string>{"agentPairing.installationID", "agentPairing.serverURL",
                                                      "appleBridge.enabledCapabilities.v1", "authorizedFileRoots.v1"}));
    const auto stored = storedDefaults();
    EXPECT_EQ(*stored.at("agentPairing.serverURL").string(), agentServer.url());
    EXPECT_EQ(stored.at("appleBridge.enabledCapabilities.v1"), parseJSON(R"(["files.list","maps.places.search"])"));

    const auto roots =
        decode<std::vector<StoredFileRoot>>(parseJSON(decode<Bytes>(stored.at("authorizedFileRoots.v1")).value));
    ASSERT_EQ(roots.size(), 1U);
    EXPECT_EQ(roots[0].id, root.id);
    EXPECT_EQ(roots[0].name, "Documents");
    EXPECT_EQ(run->platform.bookmarks->resolve(roots[0].bookmark.value).path, folder.file("Documents"));
}

TEST_F(Defaults, AreSixWhateverTheUserDoes) {
    run->start();
    std::filesystem::create_directory(folder / "Documents");
    run->folderChooser.answer = folder.file("Documents");
    for (const auto service : {PrivacyService::calendar, PrivacyService::reminders, PrivacyService::contacts,
                               PrivacyService::music, PrivacyService::location})
        run->loop.runUntilDone(model().requestAccess(service));
    run->loop.runUntilDone(model().setAllCalendars(true));
    run->loop.runUntilDone(model().setAllReminderLists(true));
    run->loop.runUntilDone(model().addFolder());
    model().setGroupEnabled(BridgeCapabilityGroup::files, true);
    model().setLaunchAtLogin(true);
    model().openPrivacySettings();
    run->pair(agentServer);
    EXPECT_EQ(storedKeys(),
              (std::vector<std::string>{"agentPairing.installationID", "agentPairing.serverURL",
                                        "appleBridge.allowedCalendarIDs", "appleBridge.allowedReminderListIDs",
                                        "appleBridge.enabledCapabilities.v1", "authorizedFileRoots.v1"}));
}

TEST_F(Defaults, NeverHoldTheCredential) {
    run->start();
    run->pair(agentServer);
    EXPECT_THAT(getFile(folder / profile::defaults), testing::Not(testing::HasSubstr(agentServer.credentials().at(0))));
    struct stat credential;
    ASSERT_EQ(stat((folder / profile::credential).c_str(), &credential), 0);
    EXPECT_EQ(credential.st_mode & 07777, 0600U);
}

TEST_F(Defaults, KeepTheServerOfTheLastPairingThatSucceeded) {
    run->start();
    run->pair(agentServer.url() + "/agent//", agentServer.issueCode());
    run->pair("http://localhost:1", "CODE");
    run->unpair();
    EXPECT_EQ(*storedDefaults().at("agentPairing.serverURL").string(), agentServer.url() + "/agent");
}

} // namespace
} // namespace bridge
