#include "bridges/common/permission_state.h"

#include "tests/fakes/scripted_authorization.h"

#include <gtest/gtest.h>
#include <limits>
#include <vector>

namespace bridge {
namespace {

using State = BridgePermissionState;

constexpr PrivacyService allServices[] = {PrivacyService::calendar, PrivacyService::reminders, PrivacyService::contacts,
                                          PrivacyService::music, PrivacyService::location};

// Every number up to two beyond the last known one.
std::vector<State> statesOf(State (*map)(int)) {
    std::vector<State> states;
    for (int status = 0; status <= 6; ++status)
        states.push_back(map(status));
    return states;
}

TEST(PermissionState, OfEventsAndReminders) {
    EXPECT_EQ(statesOf(mapEventStatus),
              (std::vector{State::notDetermined, State::restricted, State::denied, State::fullAccess, State::writeOnly,
                           State::unknown, State::unknown}));
}

TEST(PermissionState, OfContacts) {
    EXPECT_EQ(statesOf(mapContactStatus),
              (std::vector{State::notDetermined, State::restricted, State::denied, State::fullAccess, State::limited,
                           State::unknown, State::unknown}));
}

TEST(PermissionState, OfMusicCountsDeniedBeforeRestricted) {
    EXPECT_EQ(statesOf(mapMusicStatus),
              (std::vector{State::notDetermined, State::denied, State::restricted, State::fullAccess, State::unknown,
                           State::unknown, State::unknown}));
}

TEST(PermissionState, OfLocationInUseOnlyIsUnknown) {
    EXPECT_EQ(statesOf(mapLocationStatus),
              (std::vector{State::notDetermined, State::restricted, State::denied, State::fullAccess, State::unknown,
                           State::unknown, State::unknown}));
}

TEST(PermissionState, NumbersFromNowhereAreUnknownAndNeverDenied) {
    using Limits = std::numeric_limits<int>;
    for (const int status : {Limits::min(), Limits::min() + 1, -256, -4, -3, -1, 7, 99, 255, 256, 65536, 65539,
                             Limits::max() - 1, Limits::max()})
        for (const auto service : allServices)
            EXPECT_EQ(mapStatus(service, status), State::unknown) << status;
}

TEST(PermissionState, EachServiceHasItsOwnNumbers) {
    for (int status = -1; status <= 6; ++status) {
        EXPECT_EQ(mapStatus(PrivacyService::calendar, status), mapEventStatus(status));
        EXPECT_EQ(mapStatus(PrivacyService::reminders, status), mapEventStatus(status));
        EXPECT_EQ(mapStatus(PrivacyService::contacts, status), mapContactStatus(status));
        EXPECT_EQ(mapStatus(PrivacyService::music, status), mapMusicStatus(status));
        EXPECT_EQ(mapStatus(PrivacyService::location, status), mapLocationStatus(status));
    }
}

TEST(PermissionState, IsUnavailableWhereTheServiceDoesNotExist) {
    ScriptedAuthorization answers;
    for (const auto service : allServices)
        answers.statuses[service] = std::nullopt;
    for (const auto service : allServices)
        EXPECT_EQ(permissionState(answers, service), State::unavailable);
}

TEST(PermissionState, IsReadAnewEachTime) {
    ScriptedAuthorization answers;
    answers.statuses[PrivacyService::music] = 0;
    EXPECT_EQ(permissionState(answers, PrivacyService::music), State::notDetermined);
    answers.statuses[PrivacyService::music] = 1;
    EXPECT_EQ(permissionState(answers, PrivacyService::music), State::denied);
}

TEST(PermissionState, GoesOverTheWireByItsName) {
    const std::pair<State, std::string_view> names[] = {
        {State::notDetermined, "notDetermined"}, {State::denied, "denied"},   {State::restricted, "restricted"},
        {State::writeOnly, "writeOnly"},         {State::limited, "limited"}, {State::fullAccess, "fullAccess"},
        {State::unavailable, "unavailable"},     {State::unknown, "unknown"}};
    for (const auto& [state, name] : names) {
        EXPECT_EQ(wireName(state), name);
        EXPECT_EQ(fromWireName(name, std::type_identity<State>()), state);
    }
}

TEST(PermissionState, IsReadFromItsExactNameOnly) {
    for (const auto* name : {"", "Denied", "denied ", " denied", "full_access", "full", "3", "deniedd"})
        EXPECT_EQ(fromWireName(name, std::type_identity<State>()), std::nullopt) << name;
}

} // namespace
} // namespace bridge
