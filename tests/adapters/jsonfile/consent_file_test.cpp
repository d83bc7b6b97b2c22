#include "adapters/jsonfile/consent_file.h"

#include "base/platform_error.h"
#include "bridges/common/permission_state.h"
#include "tests/fakes/scripted_consent_prompt.h"
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
    std::optional<int> statusAfterRestart(PrivacyService service) { return ConsentFile(path, prompt).status(service); }
    mode_t permissions() const {
        struct stat status;
        return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777 : 0;
    }

    ScriptedConsentPrompt prompt;
    TemporaryFolder folder;
    const std::string path = folder.file("consent.json");
};

TEST_F(ConsentFileTest, NobodyWasAskedAtFirst) {
    const ConsentFile consent(path, prompt);
    for (const auto service : allServices)
        EXPECT_EQ(consent.status(service), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(ConsentFileTest, KeepsEveryStatusOfEveryServiceAlsoAfterARestart) {
    ConsentFile consent(path, prompt);
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
    ConsentFile consent(path, prompt);
    for (int index = 0; index < 5; ++index)
        consent.setStatus(allServices[index], index);
    const ConsentFile reopened(path, prompt);
    for (int index = 0; index < 5; ++index)
        EXPECT_EQ(reopened.status(allServices[index]), index);
}

TEST_F(ConsentFileTest, IsOneReadableObject) {
    ConsentFile consent(path, prompt);
    consent.setStatus(PrivacyService::calendar, 3);
    consent.setStatus(PrivacyService::location, 0);
    consent.setStatus(PrivacyService::music, std::nullopt);
    EXPECT_EQ(getFile(path), R"({"calendar":3,"location":0,"music":null})");
}

TEST_F(ConsentFileTest, ReadsWhatAPersonWrote) {
    putFile(path, "\n{ \"contacts\": 4, \"reminders\": null, \"weather\": \"fine\" }\n");
    const ConsentFile consent(path, prompt);
    EXPECT_EQ(consent.status(PrivacyService::contacts), 4);
    EXPECT_EQ(consent.status(PrivacyService::reminders), std::nullopt);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 0);
}

TEST_F(ConsentFileTest, IsForTheUserAlone) {
    const auto former = umask(0);
    ConsentFile(path, prompt).setStatus(PrivacyService::calendar, 3);
    umask(former);
    EXPECT_EQ(permissions(), 0600U);
}

TEST_F(ConsentFileTest, ADamagedFileGrantsNothing) {
    for (const std::string damaged :
         {"", "{", "[]", "3", "null", "\"fullAccess\"", "{\"calendar\":3", "{\"calendar\":3}{}",
          R"({"calendar":3,"music":"fullAccess"})", R"({"calendar":3,"music":true})", R"({"calendar":3,"music":2.5})",
          R"({"calendar":3,"music":[3]})", "{\"calendar\":3,\"\xff\":0}"}) {
        putFile(path, damaged);
        const ConsentFile consent(path, prompt);
        for (const auto service : allServices)
            EXPECT_EQ(consent.status(service), 0) << damaged;
    }
}

TEST_F(ConsentFileTest, ANumberTooLargeForAStatusMeansNothingKnown) {
    // As a 32-bit number the first would be 3, full access.
    for (const auto* number : {"4294967299", "-4294967293", "9007199254740992", "2147483648", "-2147483649"}) {
        putFile(path, std::string(R"({"calendar":)") + number + "}");
        EXPECT_EQ(permissionState(ConsentFile(path, prompt), PrivacyService::calendar), BridgePermissionState::unknown)
            << number;
    }
}

TEST_F(ConsentFileTest, AnAnswerReplacesADamagedFile) {
    putFile(path, "{");
    ConsentFile(path, prompt).setStatus(PrivacyService::contacts, 4);
    EXPECT_EQ(getFile(path), R"({"contacts":4})");
}

TEST_F(ConsentFileTest, DoesNotOpenOverAFileItCanNotTrust) {
    putFile(folder.file("elsewhere.json"), R"({"calendar":3})");
    std::filesystem::create_symlink(folder.file("elsewhere.json"), path);
    EXPECT_THROW(ConsentFile(path, prompt), PlatformError);

    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    EXPECT_THROW(ConsentFile(path, prompt), PlatformError);
}

TEST_F(ConsentFileTest, AnAnswerThatCanNotBeSavedIsNotGiven) {
    const auto place = folder.file("place");
    ConsentFile consent(place + "/consent.json", prompt);
    consent.setStatus(PrivacyService::calendar, 2);
    std::filesystem::rename(place, folder.file("away"));
    putFile(place, "a file where the folder was");
    EXPECT_THROW(consent.setStatus(PrivacyService::calendar, 3), PlatformError);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 2);
}

class Asking : public ConsentFileTest {
protected:
    // What a request that needs no waiting answers.
    bool request(PrivacyService service) {
        auto task = consent.requestAccess(service);
        task.start();
        return task.take();
    }

    ConsentFile consent{path, prompt};
};

TEST_F(Asking, AYesIsFullAccessAndKept) {
    for (const auto service : allServices) {
        EXPECT_TRUE(request(service));
        EXPECT_EQ(consent.status(service), 3);
        EXPECT_EQ(statusAfterRestart(service), 3);
        EXPECT_EQ(permissionState(consent, service), BridgePermissionState::fullAccess);
    }
    EXPECT_EQ(prompt.asked, std::vector(std::begin(allServices), std::end(allServices)));
}

TEST_F(Asking, ANoIsDenialAndKept) {
    prompt.answer = false;
    for (const auto service : allServices) {
        EXPECT_FALSE(request(service));
        EXPECT_EQ(permissionState(consent, service), BridgePermissionState::denied);
        EXPECT_EQ(permissionState(ConsentFile(path, prompt), service), BridgePermissionState::denied);
    }
    EXPECT_EQ(prompt.asked.size(), 5u);
}

TEST_F(Asking, WhoeverHasAnsweredIsNotAskedAgain) {
    for (const auto service : allServices) {
        for (const std::optional<int> status : {std::optional(1), std::optional(2), std::optional(5), std::optional(99),
                                                std::optional(-1), std::optional<int>()}) {
            consent.setStatus(service, status);
            EXPECT_FALSE(request(service));
            EXPECT_EQ(consent.status(service), status);
        }
        consent.setStatus(service, 3);
        EXPECT_TRUE(request(service));
        EXPECT_EQ(consent.status(service), 3);
    }
    EXPECT_TRUE(prompt.asked.empty());
}

TEST_F(Asking, TheRightToAddLeavesFullAccessOpen) {
    for (const auto service : {PrivacyService::calendar, PrivacyService::reminders}) {
        consent.setStatus(service, 4);
        EXPECT_TRUE(request(service));
        EXPECT_EQ(consent.status(service), 3);
    }
    prompt.answer = false;
    consent.setStatus(PrivacyService::calendar, 4);
    EXPECT_FALSE(request(PrivacyService::calendar));
    EXPECT_EQ(consent.status(PrivacyService::calendar), 2);
    EXPECT_EQ(prompt.asked.size(), 3u);
}

TEST_F(Asking, LimitedContactsAndTheLocationWhileInUseAreAnswers) {
    for (const auto service : {PrivacyService::contacts, PrivacyService::music, PrivacyService::location}) {
        consent.setStatus(service, 4);
        EXPECT_FALSE(request(service));
        EXPECT_EQ(consent.status(service), 4);
    }
    EXPECT_TRUE(prompt.asked.empty());
}

TEST_F(Asking, NobodyToAskIsAnErrorAndNoAnswer) {
    prompt.fails = true;
    EXPECT_THROW(request(PrivacyService::calendar), PlatformError);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 0);
    EXPECT_FALSE(std::filesystem::exists(path));
    prompt.fails = false;
    EXPECT_TRUE(request(PrivacyService::calendar));
}

TEST_F(Asking, AnAnswerThatCanNotBeKeptIsNone) {
    consent.setStatus(PrivacyService::music, 3);
    std::filesystem::remove(path);
    std::filesystem::create_directory(path);
    putFile(path + "/in the way", "");
    EXPECT_THROW(request(PrivacyService::calendar), PlatformError);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 0);
}

TEST_F(Asking, TwoAtOnceAskOneQuestion) {
    prompt.waits = true;
    auto first = consent.requestAccess(PrivacyService::calendar);
    auto second = consent.requestAccess(PrivacyService::calendar);
    auto other = consent.requestAccess(PrivacyService::reminders);
    first.start();
    second.start();
    other.start();
    EXPECT_EQ(prompt.asked, (std::vector{PrivacyService::calendar}));
    prompt.answered.open();
    EXPECT_TRUE(first.take());
    EXPECT_TRUE(second.take());
    EXPECT_EQ(prompt.asked, (std::vector{PrivacyService::calendar, PrivacyService::reminders}));
    prompt.answered.open();
    EXPECT_TRUE(other.take());
}

TEST_F(Asking, AQuestionThatIsDroppedGoesAwayAndTheNextIsAsked) {
    prompt.waits = true;
    auto dropped = std::make_optional(consent.requestAccess(PrivacyService::calendar));
    auto next = consent.requestAccess(PrivacyService::calendar);
    dropped->start();
    next.start();
    dropped.reset();
    EXPECT_EQ(prompt.answered.withdrawn(), 1);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 0);
    EXPECT_EQ(prompt.asked.size(), 2u);
    prompt.answered.open();
    EXPECT_TRUE(next.take());
}

TEST_F(Asking, AnAnswerFromElsewhereEndsTheWaitInTheQueue) {
    prompt.waits = true;
    auto first = consent.requestAccess(PrivacyService::reminders);
    auto queued = consent.requestAccess(PrivacyService::calendar);
    first.start();
    queued.start();
    consent.setStatus(PrivacyService::calendar, 2);
    prompt.answered.open();
    EXPECT_FALSE(queued.take());
    EXPECT_EQ(prompt.asked, (std::vector{PrivacyService::reminders}));
}

class AskingAgain : public Asking {
protected:
    bool askAgain(PrivacyService service) {
        auto task = consent.askAgain(service);
        task.start();
        return task.take();
    }
};

TEST_F(AskingAgain, ANoMayBecomeAYes) {
    for (const auto service : allServices) {
        prompt.answer = false;
        EXPECT_FALSE(request(service));
        EXPECT_TRUE(consent.canAskAgain(service));
        prompt.answer = true;
        EXPECT_FALSE(request(service));
        EXPECT_TRUE(askAgain(service));
        EXPECT_EQ(statusAfterRestart(service), 3);
    }
    EXPECT_EQ(prompt.asked.size(), 10u);
}

TEST_F(AskingAgain, ANoMayStayANo) {
    prompt.answer = false;
    EXPECT_FALSE(request(PrivacyService::contacts));
    EXPECT_FALSE(askAgain(PrivacyService::contacts));
    EXPECT_EQ(consent.status(PrivacyService::contacts), 2);
    EXPECT_EQ(prompt.asked.size(), 2u);
}

TEST_F(AskingAgain, NobodyIsAskedWhoHasGrantedAll) {
    consent.setStatus(PrivacyService::music, 3);
    EXPECT_TRUE(askAgain(PrivacyService::music));
    EXPECT_TRUE(prompt.asked.empty());
}

TEST_F(AskingAgain, IsNotForWhatIsNotTheUsersToGrant) {
    for (const auto service : allServices) {
        consent.setStatus(service, std::nullopt);
        EXPECT_FALSE(consent.canAskAgain(service));
        EXPECT_FALSE(askAgain(service));
        consent.setStatus(service, service == PrivacyService::music ? 2 : 1);
        ASSERT_EQ(permissionState(consent, service), BridgePermissionState::restricted);
        EXPECT_FALSE(consent.canAskAgain(service));
        EXPECT_FALSE(askAgain(service));
    }
    EXPECT_TRUE(prompt.asked.empty());
}

TEST_F(AskingAgain, APartOfTheAccessMayBecomeAll) {
    consent.setStatus(PrivacyService::contacts, 4);
    consent.setStatus(PrivacyService::location, 4);
    EXPECT_TRUE(askAgain(PrivacyService::contacts));
    EXPECT_TRUE(askAgain(PrivacyService::location));
}

TEST_F(AskingAgain, TwoAtOnceGetOneAnswer) {
    consent.setStatus(PrivacyService::calendar, 2);
    prompt.waits = true;
    prompt.answer = false;
    auto first = consent.askAgain(PrivacyService::calendar);
    auto second = consent.askAgain(PrivacyService::calendar);
    first.start();
    second.start();
    prompt.answered.open();
    EXPECT_FALSE(first.take());
    EXPECT_FALSE(second.take());
    EXPECT_EQ(prompt.asked.size(), 1u);
}

TEST_F(AskingAgain, NobodyToAskLeavesTheAnswer) {
    consent.setStatus(PrivacyService::calendar, 2);
    prompt.fails = true;
    EXPECT_THROW(askAgain(PrivacyService::calendar), PlatformError);
    EXPECT_EQ(consent.status(PrivacyService::calendar), 2);
}

} // namespace
} // namespace bridge
