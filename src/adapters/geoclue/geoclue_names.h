#pragma once

namespace bridge {

// GeoClue as the system bus knows it.
namespace geoclue {
constexpr const char* service = "org.freedesktop.GeoClue2";
constexpr const char* managerPath = "/org/freedesktop/GeoClue2/Manager";
constexpr const char* managerInterface = "org.freedesktop.GeoClue2.Manager";
constexpr const char* clientInterface = "org.freedesktop.GeoClue2.Client";
constexpr const char* locationInterface = "org.freedesktop.GeoClue2.Location";
// By which the user knows us where GeoClue's permissions are: the name of our desktop file.
constexpr const char* desktopID = "brindlefox-apple-bridge";
} // namespace geoclue

} // namespace bridge
