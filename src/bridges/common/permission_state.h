#pragma once

#include "platform/authorization.h"

#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

namespace bridge {

// Every platform permission, whatever its platform calls it, as the user and the agent see it.
enum class BridgePermissionState {
    notDetermined,
    denied,
    restricted,
    writeOnly,
    limited,
    fullAccess,
    unavailable,
    unknown
};

std::string_view wireName(BridgePermissionState state);
std::optional<BridgePermissionState> fromWireName(std::string_view name, std::type_identity<BridgePermissionState>);
std::span<const std::string_view> wireNames(std::type_identity<BridgePermissionState>);

// From the platform's number (see Authorization). A number that means nothing known is `unknown`, never `denied`.
BridgePermissionState mapEventStatus(int status);
BridgePermissionState mapContactStatus(int status);
BridgePermissionState mapMusicStatus(int status);
// Authorized only while in use is `unknown` too: the bridge works in the background.
BridgePermissionState mapLocationStatus(int status);

BridgePermissionState mapStatus(PrivacyService service, int status);

// The state of one service now; `unavailable` where the service does not exist.
BridgePermissionState permissionState(const Authorization& authorization, PrivacyService service);

} // namespace bridge
