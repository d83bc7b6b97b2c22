#pragma once

#include "adapters/xdg/xdg_paths.h"
#include "platform/privacy_settings.h"

#include <span>

namespace bridge {

// This desktop has no page of settings for that.
class NoSuchPage : public PlatformError {
public:
    using PlatformError::PlatformError;
};

// The settings of the desktop that $XDG_CURRENT_DESKTOP names: its own program is started with the page for it. The
// environment is read each time.
class DesktopSettings : public PrivacySettings {
public:
    explicit DesktopSettings(XdgPaths::Environment environment = XdgPaths::ofProcess)
        : m_environment(std::move(environment)) {}

    void open() override;
    // Which programs start at login. Throws NoSuchPage, or PlatformError when the page can't be shown.
    void openLoginItems();

    struct Page;

private:
    bool show(std::span<const Page> pages);
    bool isInstalled(const char* desktopFile) const;

    XdgPaths::Environment m_environment;
};

// What $XDG_CURRENT_DESKTOP says, the most specific first: "ubuntu:GNOME".
std::vector<std::string> currentDesktops(const XdgPaths::Environment& environment);

} // namespace bridge
