#pragma once

#include "adapters/xdg/xdg_paths.h"
#include "tests/support/temporary_folder.h"

#include <map>
#include <sys/stat.h>

namespace bridge {

// The folders and the environment of a user, with programs that tell that they were started.
class DesktopSite {
public:
    DesktopSite() {
        for (const auto* each : {"home", "bin", "share/applications", "xdg/autostart"})
            std::filesystem::create_directories(folder / each);
        if (mkfifo(m_started.c_str(), 0600) != 0) throw std::runtime_error("no pipe");
    }

    XdgPaths::Environment environment() const {
        return [this](const char* name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            if (found == variables.end()) return std::nullopt;
            return found->second;
        };
    }

    // It says its name, its arguments, and `more` of the shell.
    std::string addProgram(const std::string& name, const std::string& more = "") {
        const auto path = folder.file("bin/" + name);
        putFile(path, "#!/bin/sh\nprintf '%s|' '" + name + "' \"$@\" >> '" + m_started + "'\n" + more);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    // Of the page that a program may have.
    void addDesktopFile(const std::string& name) { putFile(folder / "share/applications" / name, ""); }

    // Waits until one was.
    std::string startedProgram() const { return getFile(m_started); }

    TemporaryFolder folder;
    std::map<std::string, std::string> variables{{"HOME", folder.file("home")},
                                                 {"PATH", folder.file("bin")},
                                                 {"XDG_DATA_DIRS", folder.file("share")},
                                                 {"XDG_CONFIG_DIRS", folder.file("xdg")}};

private:
    std::string m_started = folder.file("started");
};

} // namespace bridge
