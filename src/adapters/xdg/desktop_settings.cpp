#include "adapters/xdg/desktop_settings.h"

#include "adapters/xdg/detached_program.h"
#include "adapters/xdg/find_program.h"

#include <algorithm>
#include <sstream>
#include <unistd.h>

namespace bridge {

// Pages have come, gone and changed their names; the file says whether this version has it.
struct DesktopSettings::Page {
    std::string_view desktop;
    const char* program;
    const char* argument;    // none when null
    const char* desktopFile; // always there when null
};

namespace {

using Page = DesktopSettings::Page;

// Of one desktop the best first.
constexpr Page privacyPages[] = {
    {"GNOME", "gnome-control-center", "privacy", "gnome-privacy-panel.desktop"},
    {"GNOME", "gnome-control-center", "location", "gnome-location-panel.desktop"},
    {"GNOME", "gnome-control-center", nullptr, nullptr},
    {"KDE", "systemsettings", "kcm_app-permissions", "kcm_app-permissions.desktop"},
    {"KDE", "systemsettings", nullptr, nullptr},
    {"KDE", "systemsettings5", nullptr, nullptr},
    {"X-Cinnamon", "cinnamon-settings", "privacy", nullptr},
};

constexpr Page loginPages[] = {
    {"GNOME", "gnome-session-properties", nullptr, nullptr},
    {"GNOME", "gnome-tweaks", nullptr, nullptr},
    {"KDE", "systemsettings", "kcm_autostart", "kcm_autostart.desktop"},
    {"KDE", "systemsettings5", "kcm_autostart", "kcm_autostart.desktop"},
    {"XFCE", "xfce4-session-settings", nullptr, nullptr},
    {"X-Cinnamon", "cinnamon-settings", "startup", nullptr},
    {"MATE", "mate-session-properties", nullptr, nullptr},
    {"LXQt", "lxqt-config-session", nullptr, nullptr},
};

} // namespace

std::vector<std::string> currentDesktops(const XdgPaths::Environment& environment) {
    std::vector<std::string> names;
    std::istringstream list(environment("XDG_CURRENT_DESKTOP").value_or(""));
    for (std::string name; std::getline(list, name, ':');)
        if (!name.empty()) names.push_back(name);
    return names;
}

void DesktopSettings::open() {
    if (show(privacyPages)) return;
    throw NoSuchPage("This desktop has no page of privacy settings. What the agent may use is decided here, with the "
                     "switches and buttons of each group.");
}

void DesktopSettings::openLoginItems() {
    if (!show(loginPages)) throw NoSuchPage("This desktop has no page for the programs that start at login.");
}

bool DesktopSettings::show(std::span<const Page> pages) {
    for (const auto& desktop : currentDesktops(m_environment)) {
        for (const auto& page : pages) {
            if (page.desktop != desktop || !isInstalled(page.desktopFile)) continue;
            const auto program = findProgram(page.program, m_environment);
            if (!program) continue;
            std::vector<std::string> command{*program};
            if (page.argument) command.emplace_back(page.argument);
            startDetached(command);
            return true;
        }
    }
    return false;
}

bool DesktopSettings::isInstalled(const char* desktopFile) const {
    if (!desktopFile) return true;
    const XdgPaths paths(m_environment);
    auto folders = paths.dataDirectories;
    folders.push_back(paths.dataHome);
    return std::ranges::any_of(folders, [&](const std::string& folder) {
        return access((folder + "/applications/" + desktopFile).c_str(), R_OK) == 0;
    });
}

} // namespace bridge
