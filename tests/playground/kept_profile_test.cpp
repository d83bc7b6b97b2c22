#include "tests/playground/playground_process.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace bridge {
namespace {

class KeptProfile : public testing::Test {
protected:
    std::vector<std::string> words(std::vector<std::string> more = {}) const {
        more.insert(more.end(), {"--profile", profile});
        return more;
    }
    static mode_t permissions(const std::filesystem::path& path) {
        struct stat status;
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }
    JSONValue::Object defaults() const { return *parseJSON(getFile(profile + "/defaults.json")).object(); }

    TemporaryFolder temporary;
    const std::string profile = temporary.file("kept");
};

TEST_F(KeptProfile, HoldsForTheNextRun) {
    const std::string payload = R"(","path":"kept.txt","content":"still here","overwrite":false})";
    std::string firstLine;
    {
        ServingPlayground first(temporary, words());
        firstLine = first.line();
        EXPECT_EQ(first.profile(), profile);
        EXPECT_EQ(first.call("files.write_text", R"({"rootID":")" + first.rootID() + payload).status, 200);
        EXPECT_EQ(first.end(SIGTERM).status, 0);
    }
    const ServingPlayground second(temporary, words());
    EXPECT_EQ(second.line(), firstLine);
    EXPECT_EQ(second.health().status, 200);
    const auto read =
        second.call("files.read_text", R"({"rootID":")" + second.rootID() + R"(","path":"kept.txt"})").result();
    EXPECT_EQ(*read.object()->at("content").string(), "still here");
}

TEST_F(KeptProfile, IsForTheUserAlone) {
    const auto former = umask(0);
    ServingPlayground playground(temporary, {"--profile", temporary.file("deep/kept")});
    umask(former);
    EXPECT_EQ(playground.end(SIGTERM).status, 0);
    EXPECT_EQ(permissions(temporary / "deep"), 0700U);
    EXPECT_EQ(permissions(temporary / "deep/kept"), 0700U);
    for (const auto* file : {"defaults.json", "credential.json", "consent.json", "bridge.log", "calendars.db"})
        EXPECT_EQ(permissions(temporary / "deep/kept" / file), 0600U) << file;
}

TEST_F(KeptProfile, LeavesTheModeOfAFolderThatWasThere) {
    std::filesystem::create_directory(profile);
    ASSERT_EQ(chmod(profile.c_str(), 0755), 0);
    EXPECT_EQ(ServingPlayground(temporary, words()).end(SIGTERM).status, 0);
    EXPECT_EQ(permissions(profile), 0755U);
}

TEST_F(KeptProfile, HasDefaultsUnderTheirKeys) {
    EXPECT_EQ(ServingPlayground(temporary, words()).end(SIGTERM).status, 0);
    std::vector<std::string> keys;
    for (const auto& [key, value] : defaults())
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"agentPairing.installationID", "agentPairing.serverURL",
                                              "appleBridge.allowedCalendarIDs", "appleBridge.allowedReminderListIDs",
                                              "appleBridge.enabledCapabilities.v1", "authorizedFileRoots.v1"}));
    EXPECT_EQ(defaults().at("appleBridge.enabledCapabilities.v1").array()->size(), 47U);
}

TEST_F(KeptProfile, LeavesNothingOutsideItself) {
    EXPECT_EQ(ServingPlayground(temporary, words()).end(SIGTERM).status, 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(temporary.path()), {}), 1);
}

TEST_F(KeptProfile, IsFoundByARelativePath) {
    const auto relative = std::filesystem::relative(profile).string();
    EXPECT_EQ(ServingPlayground(temporary, {"--profile", relative + "/"}).profile(), profile);
}

TEST_F(KeptProfile, UnpairedForgetsTheCredentialAndPairingMakesANewOne) {
    std::string first;
    {
        ServingPlayground playground(temporary, words());
        first = playground.credential();
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    {
        ServingPlayground playground(temporary, words({"--unpaired"}));
        EXPECT_EQ(exchange("GET /health HTTP/1.1\r\nAuthorization: Bearer " + first + "\r\n\r\n").code(),
                  "pairing_required");
        EXPECT_EQ(playground.end(SIGTERM).status, 0);
    }
    const ServingPlayground playground(temporary, words());
    EXPECT_NE(playground.credential(), first);
    EXPECT_EQ(playground.health().status, 200);
    EXPECT_EQ(exchange("GET /health HTTP/1.1\r\nAuthorization: Bearer " + first + "\r\n\r\n").code(), "unauthorized");
}

TEST_F(KeptProfile, ThatCanNotBeMadeIsSaid) {
    putFile(profile, "a file");
    const auto ended = runPlayground(temporary, words({"--serve"}));
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.output, "");
    EXPECT_TRUE(ended.errors.starts_with("The bridge could not be tried: ")) << ended.errors;
    EXPECT_EQ(getFile(profile), "a file");
}

} // namespace
} // namespace bridge
