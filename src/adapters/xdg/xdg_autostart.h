#pragma once

#include "adapters/xdg/desktop_entry.h"
#include "adapters/xdg/desktop_settings.h"
#include "platform/login_item.h"

#include <optional>

namespace bridge {

// The program among those that the desktop starts at login, as the freedesktop.org Autostart standard has it: an entry
// in $XDG_CONFIG_HOME/autostart, or one of the whole system, over which the user's own goes. Everything is read afresh
// at each call, the environment too.
//
// The user's entry with "Hidden=true", or with a desktop's own word for "off", was switched off elsewhere and requires
// approval, unless it bears our mark: a system's entry can't be taken away, so switching off hides it by such a copy.
// What does not start for another reason (another desktop's, its program is gone) is not registered.
class XdgAutostart : public LoginItem {
public:
    static constexpr const char* fileName = "brindlefox-apple-bridge.desktop";

    // `program` is the absolute path of what is to be started with `arguments`; empty when it is not known. It is
    // looked for at each call: without it the service is not found.
    XdgAutostart(std::string program, std::vector<std::string> arguments,
                 XdgPaths::Environment environment = XdgPaths::ofProcess)
        : m_program(std::move(program)),
          m_arguments(std::move(arguments)),
          m_environment(std::move(environment)),
          m_settings(m_environment) {}

    LoginItemStatus status() const override;
    void registerItem() override;
    void unregisterItem() override;
    void openLoginItemsSettings() override;

private:
    std::optional<XdgPaths> paths() const;
    bool starts(const DesktopEntry& entry) const;
    LoginItemStatus statusOfUsers(const DesktopEntry& entry) const;
    bool systemStarts(const XdgPaths& paths) const;

    void writeEntry(const XdgPaths& paths, const std::string& rest) const;

    std::string m_program;
    std::vector<std::string> m_arguments;
    XdgPaths::Environment m_environment;
    DesktopSettings m_settings;
};

} // namespace bridge
