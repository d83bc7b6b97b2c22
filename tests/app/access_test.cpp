#include "app/location_managers.h"
#include "app/no_consent_prompt.h"
#include "tests/app/installation.h"

namespace bridge {
namespace {

using State = BridgePermissionState;
using Service = PrivacyService;
using Group = BridgeCapabilityGroup;

constexpr Service allServices[] = {Service::calendar, Service::reminders, Service::contacts, Service::music,
                                   Service::location};

class Access : public InstallationTest {
protected:
    Access() { run->start(); }
    void request(Service service) { run->loop.runUntilDone(model().requestAccess(service)); }
    void consent(Service service, std::optional<int> status) {
        run->consent.setStatus(service, status);
        run->loop.runUntilDone(model().refresh());
    }
    State state(Service service) { return model().permission(service).get(); }
    std::optional<std::string> lastError() { return model().lastError.get(); }
    static int denied(Service service) { return service == Service::music ? 1 : 2; }
    static int restricted(Service service) { return service == Service::music ? 2 : 1; }
};

TEST_F(Access, IsAskedForEachService) {
    for (const auto service : allServices) {
        EXPECT_EQ(model().accessAction(service), AccessAction::grantAccess);
        request(service);
        EXPECT_EQ(state(service), State::fullAccess);
        EXPECT_EQ(model().accessAction(service), AccessAction::none);
        EXPECT_EQ(lastError(), std::nullopt);
    }
    EXPECT_EQ(run->user.asked, std::vector(std::begin(allServices), std::end(allServices)));
    EXPECT_EQ(model().calendars.get().size(), 3u);
    EXPECT_EQ(model().reminderLists.get().size(), 3u);
}

TEST_F(Access, IsPublishedByServiceAsByName) {
    const int full = 3;
    const std::map<Service, Published<State>*> named{{Service::calendar, &model().calendarPermission},
                                                     {Service::reminders, &model().remindersPermission},
                                                     {Service::contacts, &model().contactsPermission},
                                                     {Service::music, &model().musicPermission},
                                                     {Service::location, &model().locationPermission}};
    for (const auto& [service, published] : named) {
        EXPECT_EQ(&model().permission(service), published);
        EXPECT_EQ(published->get(), State::notDetermined);
        consent(service, full);
        EXPECT_EQ(published->get(), State::fullAccess);
    }
}

TEST_F(Access, AnAnswerThatCanNotBeSavedIsNoneAndIsTold) {
    std::filesystem::create_directory(folder / profile::consent);
    for (const auto service : allServices) {
        request(service);
        EXPECT_NE(state(service), State::fullAccess);
        const auto told = lastError().value_or("");
        EXPECT_TRUE(told.starts_with("The answer could not be saved, so nothing has changed.")) << told;
    }
    std::filesystem::remove(folder / profile::consent);
    request(Service::contacts);
    EXPECT_EQ(state(Service::contacts), State::fullAccess);
    EXPECT_EQ(lastError(), std::nullopt);
}

TEST_F(Access, ARefusalIsToldAndMayBeTakenBack) {
    const std::string names[] = {"Calendar", "Reminders", "Contacts", "Music", "Location"};
    for (const auto service : allServices) {
        run->user.answer = false;
        request(service);
        EXPECT_EQ(state(service), State::denied);
        EXPECT_EQ(lastError(), "Full access to " + names[static_cast<size_t>(service)] + " has not been granted.");
        EXPECT_EQ(model().accessAction(service), AccessAction::grantAccess);
        run->user.answer = true;
        request(service);
        EXPECT_EQ(state(service), State::fullAccess);
        EXPECT_EQ(lastError(), std::nullopt);
    }
}

TEST_F(Access, NobodyToAskIsAnErrorAndNoAnswer) {
    run->user.fails = true;
    request(Service::calendar);
    EXPECT_EQ(lastError(), "There is nobody to ask.");
    EXPECT_EQ(state(Service::calendar), State::notDetermined);
}

TEST(NoConsentPrompt, SaysWhyNobodyIsAsked) {
    auto task = NoConsentPrompt().ask(Service::calendar);
    task.start();
    EXPECT_THROW(task.take(), PlatformError);
}

TEST_F(Access, WhatIsNotTheUsersToGrantIsNotAskedFor) {
    for (const auto service : allServices) {
        consent(service, restricted(service));
        EXPECT_EQ(state(service), State::restricted);
        EXPECT_EQ(model().accessAction(service), AccessAction::none);
        request(service);
        EXPECT_NE(lastError(), std::nullopt);
        consent(service, std::nullopt);
        EXPECT_EQ(state(service), State::unavailable);
        EXPECT_EQ(model().accessAction(service), AccessAction::none);
        request(service);
    }
    EXPECT_TRUE(run->user.asked.empty());
}

TEST_F(Access, PartOfItMayBecomeAll) {
    consent(Service::calendar, 4);
    EXPECT_EQ(state(Service::calendar), State::writeOnly);
    consent(Service::contacts, 4);
    EXPECT_EQ(state(Service::contacts), State::limited);
    consent(Service::location, 4);
    EXPECT_EQ(state(Service::location), State::unknown);
    for (const auto service : {Service::calendar, Service::contacts, Service::location}) {
        EXPECT_EQ(model().accessAction(service), AccessAction::grantAccess);
        request(service);
        EXPECT_EQ(state(service), State::fullAccess);
    }
}

TEST_F(Access, TwoClicksAreOneQuestion) {
    for (const int status : {0, 2}) {
        consent(Service::contacts, status);
        run->user.asked.clear();
        run->user.waits = true;
        auto first = model().requestAccess(Service::contacts);
        auto second = model().requestAccess(Service::contacts);
        first.start();
        second.start();
        EXPECT_EQ(run->user.asked.size(), 1u);
        run->user.answered.open();
        run->finish(std::move(first));
        run->finish(std::move(second));
        EXPECT_EQ(run->user.asked.size(), 1u);
        EXPECT_EQ(state(Service::contacts), State::fullAccess);
    }
}

TEST_F(Access, AQuestionHoldsUpNothingElse) {
    consent(Service::calendar, 3);
    run->user.waits = true;
    auto question = model().requestAccess(Service::music);
    question.start();
    run->loop.runUntilDone(model().setCalendar("team", true));
    run->loop.runUntilDone(model().refresh());
    EXPECT_EQ(model().allowedCalendarIDs.get(), std::set<std::string>{"team"});
    EXPECT_FALSE(question.done());
}

// On a platform that has the switches.
class SwitchesElsewhere : public Authorization {
public:
    std::optional<int> answer = 2;
    std::optional<int> status(Service) const override { return answer; }
    Task<bool> requestAccess(Service) override { co_return answer == 3; }
};

TEST_F(Access, IsChangedInTheSettingsWhereThePlatformHasTheSwitch) {
    auto elsewhere = std::make_unique<SwitchesElsewhere>();
    auto& switches = *elsewhere;
    EventLoop loop;
    auto platform = openEmbeddedPlatform(loop, folder.file("another profile"));
    platform.authorization = std::move(elsewhere);
    platform.locationManager = openFixedLocation(loop, platform, {folder.file("services.json"), {}});
    BridgeCapabilityPolicy policy(*platform.defaults);
    BridgeModel other(loop, platform, policy);
    loop.runUntilDone(other.refresh());
    EXPECT_EQ(other.accessAction(Service::calendar), AccessAction::openSettings);
    loop.runUntilDone(other.requestAccess(Service::contacts));
    EXPECT_EQ(other.lastError.get(), "Full access to Contacts has not been granted.");
    switches.answer = 3;
    loop.runUntilDone(other.refresh());
    EXPECT_EQ(other.accessAction(Service::calendar), AccessAction::none);
    switches.answer = 0;
    loop.runUntilDone(other.refresh());
    EXPECT_EQ(other.accessAction(Service::calendar), AccessAction::grantAccess);
}

TEST_F(Access, OfAGroupIsThatOfItsService) {
    const std::map<Group, Service> services{{Group::calendar, Service::calendar},
                                            {Group::reminders, Service::reminders},
                                            {Group::contacts, Service::contacts},
                                            {Group::music, Service::music},
                                            {Group::locationMaps, Service::location}};
    for (const auto group : allCapabilityGroups) {
        const auto found = services.find(group);
        EXPECT_EQ(BridgeModel::permissionOf(group),
                  found == services.end() ? std::nullopt : std::optional(found->second));
    }
}

TEST_F(Access, ThePlatformsPageIsShown) {
    model().openPrivacySettings();
    EXPECT_EQ(run->privacySettings.shown, 1);
    EXPECT_EQ(lastError(), std::nullopt);
    run->privacySettings.fails = true;
    model().openPrivacySettings();
    EXPECT_EQ(lastError(), "There is no such page here.");
    EXPECT_TRUE(model().failedAction());
    run->privacySettings.fails = false;
    model().openPrivacySettings();
    EXPECT_EQ(lastError(), std::nullopt);
    EXPECT_FALSE(model().failedAction());
}

} // namespace
} // namespace bridge
