#pragma once

#include <string_view>
#include <vector>

namespace bridge::architecture {

// What the files of a folder may include besides the folder itself. The longest matching folder counts, so an adapter
// with needs of its own is listed after the rule for all adapters. "*" is any room.
struct Rule {
    std::string_view folder;
    std::vector<std::string_view> rooms;
    std::vector<std::string_view> systems;
};

inline const std::vector<Rule> rules{
    {"base", {}, {"standard", "posix", "fmt", "libuv", "icu", "simdjson"}},
    // A port is written for every platform: not one outside system shows in it.
    {"platform", {"base"}, {"standard"}},
    {"policy", {"base", "platform"}, {"standard", "fmt"}},
    {"bridges", {"base", "platform", "policy", "bridges/common"}, {"standard", "fmt"}},
    // Confinement to a folder is done with the descriptors of POSIX, and on Linux with openat2.
    {"bridges/files", {"base", "platform", "policy", "bridges/common"}, {"standard", "fmt", "posix", "linux"}},
    // The runner of scripts stands between the bridges whose applications are scripted and the port.
    {"bridges/iwork",
     {"base", "platform", "bridges/common", "bridges/files", "bridges/scripting"},
     {"standard", "fmt"}},
    {"bridges/music", {"base", "platform", "bridges/common", "bridges/scripting"}, {"standard", "fmt"}},
    {"server", {"base", "platform", "policy", "bridges"}, {"standard", "fmt", "posix", "libuv"}},
    {"adapters", {"base", "platform"}, {"standard", "fmt", "posix"}},
    {"adapters/curl", {"base", "platform"}, {"standard", "fmt", "posix", "curl"}},
    // GIO knows the Trash of other volumes; the home Trash and its file format are those of the desktop standard.
    {"adapters/gio", {"base", "platform", "adapters/xdg"}, {"standard", "fmt", "posix", "glib"}},
    // Whatever stores calendars keeps them as iCalendar; what is known of that stands in one place.
    {"adapters/ical", {"base", "platform"}, {"standard", "fmt", "libical", "icu"}},
    // And whatever stores contacts knows vCard from here.
    {"adapters/vcard", {"base", "platform"}, {"standard", "fmt", "icu"}},
    {"adapters/sqlite",
     {"base", "platform", "adapters/ical", "adapters/vcard"},
     {"standard", "fmt", "posix", "sqlite"}},
    {"adapters/eds",
     {"base", "platform", "adapters/dbus", "adapters/ical", "adapters/vcard"},
     {"standard", "fmt", "posix", "glib", "eds"}},
    // The language, and what an application brings along to be spoken to in it.
    {"adapters/applescript", {"base", "platform"}, {"standard", "fmt", "posix", "icu"}},
    {"adapters/libreoffice", {"base", "platform", "adapters/applescript"}, {"standard", "fmt", "posix"}},
    // The dictionaries know of the office program what any program would have to offer.
    {"adapters/iworkapps", {"base", "platform", "adapters/applescript", "adapters/libreoffice"}, {"standard", "fmt"}},
    // So does the dictionary of music of what plays it, which a program fills.
    {"adapters/musicapp", {"base", "platform", "adapters/applescript"}, {"standard", "fmt"}},
    {"adapters/mpd",
     {"base", "platform", "adapters/applescript", "adapters/musicapp"},
     {"standard", "fmt", "posix", "mpd"}},
    // Who may know where the device is, and the places that were fixed; a service that finds it comes beside.
    {"adapters/location", {"base", "platform"}, {"standard", "fmt"}},
    {"adapters/geoclue",
     {"base", "platform", "adapters/dbus", "adapters/location"},
     {"standard", "fmt", "posix", "glib"}},
    {"adapters/gazetteer", {"base", "platform"}, {"standard", "fmt", "posix", "icu", "sqlite"}},
    // Both are spoken to over the port for HTTP.
    {"adapters/nominatim", {"base", "platform"}, {"standard", "fmt"}},
    {"adapters/valhalla", {"base", "platform"}, {"standard", "fmt"}},
    {"adapters/portal", {"base", "platform", "adapters/dbus"}, {"standard", "fmt", "posix", "glib"}},
    // The program that is in the sandbox with LibreOffice.
    {"adapters/libreoffice/helper",
     {"base", "platform", "adapters/libreoffice"},
     {"standard", "fmt", "posix", "linux", "uno", "ffmpeg"}},
    // The buses of session and system, by GLib, for all who speak over them.
    {"adapters/dbus", {}, {"standard", "glib"}},
    {"adapters/glib", {"base", "platform"}, {"standard", "fmt", "posix", "glib"}},
    {"adapters/posix", {"base", "platform"}, {"standard", "fmt", "posix", "linux"}},
    // libsecret's own interface is written in GLib's types.
    {"adapters/secretservice",
     {"base", "platform", "adapters/dbus"},
     {"standard", "fmt", "posix", "glib", "libsecret"}},
    // The wiring names every adapter, but speaks to their systems through them.
    {"app", {"*"}, {"standard", "fmt", "posix", "libuv", "qt"}},
    // What Qt does not tell an X server is said to it here.
    {"app/shell", {"*"}, {"standard", "fmt", "posix", "libuv", "qt", "xcb"}},
};

} // namespace bridge::architecture
