#include "adapters/jsonfile/consent_file.h"

#include "base/platform_error.h"
#include "bridges/common/permission_state.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>
#include <limits>
#include <sys/stat.h>

namespace bridge {
namespace {

constexpr PrivacyService allServices[] = {PrivacyService::calendar, PrivacyService::reminders, PrivacyService::contacts,
                                          PrivacyService::music, PrivacyService::location};

class ConsentFileTest : public testing::Test {
protected:
    std::optional<int> statusAfterRestart(PrivacyService service) const { return ConsentFile(path).status(service); }
    mode_t permissions() const {
        struct stat status;
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    TemporaryFolder folder;
    const std::string path = folder.file("consent.json");
};

TEST_F(ConsentFileTest, NobodyWasAskedAtFirst) {
    const ConsentFile consent(path);
    for (const auto service : allServices)
        EXPECT_EQ(consent.status(service), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ConsentFileTest, KeepsEveryStatusOfEveryServiceAlsoAfterARestart) {
    ConsentFile consent(path);
    for (const std::optional<int> status :
         {std::optional(0), std::optional(1), std::optional(2), std::optional(3), std::optional(4), std::optional(99),
          std::optional(-1), std::optional<int>()}) {
        for (const auto service : allServices) {
            consent.setStatus(service, status);
            EXPECT_EQ(consent.status(service), status);
            EXPECT_EQ(statusAfterRestart(service), status);
        }
    }
}

TEST_F(ConsentFileTest, KeepsServicesApart) {
    ConsentFile consent(path);
    for (int index = 0; index < 5; ++index)
        consent.setStatus(allServices[index], index);
    const ConsentFile reopened(path);
    for (int index = 0; index < 5; ++index)
        EXPECT_EQ(reopened.status(allServices[index]), index);
}

TEST_F(ConsentFileTest, IsOneReadableObject) {
    ConsentFile consent(path);
    consent.setStatus(PrivacyService::calendar, 3);
    consent.setStatus(PrivacyService::location, 0);
    consent.setStatus(PrivacyService::music, std::nullopt);
    EXPECT_EQ(getFile(path), R"({"calendar":3,"location":0,"music":null})");
}

TEST_F(ConsentFileTest, ReadsWhatAPersonWrote) {
    putFile(path, "\n{ \"contacts\": 4, \"reminders\": null, \"weather\": \"fine\" }\n");
    const ConsentFile consent(path);
    EXPECT_EQ(consent.status(PrivacyService::contacts), 4);
    EXPECT_EQ(consent.status(PrivacyService::reminders), std::nullopt);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 0);
}

TEST_F(ConsentFileTest, IsForTheUserAlone) {
    const auto former = umask(0);
    ConsentFile(path).setStatus(PrivacyService::calendar, 3);
    umask(former);
    EXPECT_EQ(permissions(), 0600U);
}

TEST_F(ConsentFileTest, ADamagedFileGrantsNothing) {
    for (const std::string damaged :
         {"", "{", "[]", "3", "null", "\"fullAccess\"", "{\"calendar\":3", "{\"calendar\":3}{}",
          R"({"calendar":3,"music":"fullAccess"})", R"({"calendar":3,"music":true})", R"({"calendar":3,"music":2.5})",
          R"({"calendar":3,"music":[3]})", "{\"calendar\":3,\"\xff\":0}"}) {
        putFile(path, damaged);
        const ConsentFile consent(path);
        for (const auto service : allServices)
            EXPECT_EQ(consent.status(service), 0) << damaged;
    }
}

TEST_F(ConsentFileTest, ANumberTooLargeForAStatusMeansNothingKnown) {
    // As a 32-bit number the first would be 3, full access.
    for (const auto* number : {"4294967299", "-4294967293", "9007199254740992", "2147483648", "-2147483649"}) {
        putFile(path, std::string(R"({"calendar":)") + number + "}");
        EXPECT_EQ(permissionState(ConsentFile(path), PrivacyService::calendar), BridgePermissionState::unknown)
            << number;
    }
}

TEST_F(ConsentFileTest, AnAnswerReplacesADamagedFile) {
    putFile(path, "{");
    ConsentFile(path).setStatus(PrivacyService::contacts, 4);
    EXPECT_EQ(getFile(path), R"({"contacts":4})");
}

TEST_F(ConsentFileTest, DoesNotOpenOverAFileItCanNotTrust) {
    putFile(folder.file("elsewhere.json"), R"({"calendar":3})");
    std::filesystem::create_symlink(folder.file("elsewhere.json"), path);
    EXPECT_THROW(ConsentFile{path}, PlatformError);

    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_THROW(ConsentFile{path}, PlatformError);
}

TEST_F(ConsentFileTest, AnAnswerThatCanNotBeSavedIsNotGiven) {
    const auto place = folder.file("place");
    ConsentFile consent(place + "/consent.json");
    consent.setStatus(PrivacyService::calendar, 2);
    std::filesystem::rename(place, folder.file("away"));
    putFile(place, "a file where the folder was");
    EXPECT_THROW(consent.setStatus(PrivacyService::calendar, 3), PlatformError);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 2);
}

} // namespace
} // namespace bridge
