#include "app/dashboard/consent_question.h"
#include "base/platform_error.h"

#include <gtest/gtest.h>

namespace bridge {
namespace {

using Answer = ConsentQuestion::Answer;

class Consent : public testing::Test {
protected:
    Consent() { questions.attachDashboard(); }

    Task<bool> asked(PrivacyService service) {
        auto task = questions.ask(service);
        task.start();
        return task;
    }
    std::optional<PrivacyService> current() { return questions.current.get(); }

    ConsentQuestion questions;
};

TEST_F(Consent, IsWhatTheUserAnswers) {
    auto first = asked(PrivacyService::calendar);
    EXPECT_EQ(current(), PrivacyService::calendar);
    EXPECT_FALSE(first.done());
    questions.answer(Answer::allow);
    ASSERT_TRUE(first.done());
    EXPECT_TRUE(first.take());
    EXPECT_EQ(current(), std::nullopt);

    auto second = asked(PrivacyService::music);
    questions.answer(Answer::dontAllow);
    EXPECT_FALSE(second.take());
}

TEST_F(Consent, IsAskedForOneServiceAfterTheOther) {
    auto contacts = asked(PrivacyService::contacts);
    auto location = asked(PrivacyService::location);
    EXPECT_EQ(current(), PrivacyService::contacts);
    questions.answer(Answer::allow);
    EXPECT_TRUE(contacts.done());
    EXPECT_FALSE(location.done());
    EXPECT_EQ(current(), PrivacyService::location);
    questions.answer(Answer::dontAllow);
    EXPECT_FALSE(location.take());
}

TEST_F(Consent, IsNoLongerAskedForWhenNobodyWaits) {
    auto contacts = asked(PrivacyService::contacts);
    auto music = asked(PrivacyService::music);
    auto location = asked(PrivacyService::location);
    music = {};
    EXPECT_EQ(current(), PrivacyService::contacts);
    contacts = {};
    EXPECT_EQ(current(), PrivacyService::location);
    location = {};
    EXPECT_EQ(current(), std::nullopt);
    questions.answer(Answer::allow); // nobody's
}

TEST_F(Consent, CanNotBeAskedForWithoutADashboard) {
    ConsentQuestion without;
    EXPECT_THROW(
        {
            auto task = without.ask(PrivacyService::music);
            task.start();
            task.take();
        },
        PlatformError);
}

TEST_F(Consent, IsAFailureWhenTheDashboardGoes) {
    auto contacts = asked(PrivacyService::contacts);
    auto music = asked(PrivacyService::music);
    questions.detachDashboard();
    EXPECT_THROW(contacts.take(), PlatformError);
    EXPECT_THROW(music.take(), PlatformError);
    EXPECT_EQ(current(), std::nullopt);
}

TEST_F(Consent, IsAFailureWhenTheDashboardCanNotBeShown) {
    auto contacts = asked(PrivacyService::contacts);
    auto music = asked(PrivacyService::music);
    questions.cannotBeShown("Parts are missing.");
    EXPECT_EQ(current(), std::nullopt);
    EXPECT_THROW(music.take(), PlatformError);
    try {
        contacts.take();
        FAIL() << "nobody has answered";
    } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "You can't be asked for access. Parts are missing.");
    }
    // It may be mended.
    auto again = asked(PrivacyService::contacts);
    questions.answer(Answer::allow);
    EXPECT_TRUE(again.take());
}

Task<bool> askTwice(ConsentQuestion* questions) {
    try {
        co_await questions->ask(PrivacyService::contacts);
    } catch (const PlatformError&) {
    }
    const bool answer = co_await questions->ask(PrivacyService::contacts);
    co_return answer;
}

TEST_F(Consent, IsAskedForAnewByWhoeverWantsToAfterAFailure) {
    auto stubborn = askTwice(&questions);
    stubborn.start();
    questions.cannotBeShown("Parts are missing.");
    EXPECT_EQ(current(), PrivacyService::contacts);
    questions.answer(Answer::dontAllow);
    EXPECT_FALSE(stubborn.take());
}

} // namespace
} // namespace bridge
