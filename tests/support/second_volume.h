#pragma once

#include "tests/support/temporary_folder.h"

#include <optional>
#include <sched.h>
#include <string>
#include <sys/mount.h>
#include <unistd.h>

namespace bridge {

// A small volume of its own, mounted for this process alone: as root, or where an ordinary user may make a user
// namespace. Make it before any thread.
class SecondVolume {
public:
    SecondVolume() {
        if (!enterNamespace()) return;
        mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr);
        m_mounted = mount("none", m_folder.path().c_str(), "tmpfs", 0, "size=16m,mode=755") == 0;
    }
    ~SecondVolume() {
        if (m_mounted) umount2(m_folder.path().c_str(), MNT_DETACH);
    }

    bool isMounted() const { return m_mounted; }
    const std::filesystem::path& path() const { return m_folder.path(); }

private:
    static bool enterNamespace() {
        const auto user = std::to_string(geteuid());
        const auto group = std::to_string(getegid());
        if (unshare(CLONE_NEWNS) == 0) return true;
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        putFile("/proc/self/setgroups", "deny");
        putFile("/proc/self/uid_map", user + " " + user + " 1");
        putFile("/proc/self/gid_map", group + " " + group + " 1");
        return true;
    }

    TemporaryFolder m_folder;
    bool m_mounted = false;
};

} // namespace bridge
