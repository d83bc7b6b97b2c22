#include "bridges/common/permission_state.h"

#include <algorithm>
#include <array>

namespace bridge {

namespace {

using State = BridgePermissionState;

constexpr std::array<std::string_view, 8> names{"notDetermined", "denied",     "restricted",  "writeOnly",
                                                "limited",       "fullAccess", "unavailable", "unknown"};

template <size_t count> State lookUp(const State (&states)[count], int status) {
    return status >= 0 && static_cast<size_t>(status) < count ? states[status] : State::unknown;
}

} // namespace

std::string_view wireName(State state) {
    return names[static_cast<size_t>(state)];
}

std::optional<State> fromWireName(std::string_view name, std::type_identity<State>) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) return std::nullopt;
    return static_cast<State>(found - names.begin());
}

std::span<const std::string_view> wireNames(std::type_identity<State>) {
    return names;
}

State mapEventStatus(int status) {
    return lookUp({State::notDetermined, State::restricted, State::denied, State::fullAccess, State::writeOnly},
                  status);
}

State mapContactStatus(int status) {
    return lookUp({State::notDetermined, State::restricted, State::denied, State::fullAccess, State::limited}, status);
}

State mapMusicStatus(int status) {
    return lookUp({State::notDetermined, State::denied, State::restricted, State::fullAccess}, status);
}

State mapLocationStatus(int status) {
    return lookUp({State::notDetermined, State::restricted, State::denied, State::fullAccess}, status);
}

State mapStatus(PrivacyService service, int status) {
    switch (service) {
    case PrivacyService::calendar:
    case PrivacyService::reminders:
        return mapEventStatus(status);
    case PrivacyService::contacts:
        return mapContactStatus(status);
    case PrivacyService::music:
        return mapMusicStatus(status);
    case PrivacyService::location:
        return mapLocationStatus(status);
    }
    return State::unknown;
}

State permissionState(const Authorization& authorization, PrivacyService service) {
    const auto status = authorization.status(service);
    return status ? mapStatus(service, *status) : State::unavailable;
}

} // namespace bridge
