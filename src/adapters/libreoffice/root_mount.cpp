#include "adapters/libreoffice/root_mount.h"

#include <fstream>
#include <sstream>
#include <unistd.h>

namespace bridge::office {

namespace {

// proc_pid_mountinfo(5): the fifth field is where a mount lies, as this process sees it.
bool isMounted(const std::string& place) {
    std::ifstream mounts("/proc/self/mountinfo");
    for (std::string line; std::getline(mounts, line);) {
        std::istringstream fields(line);
        std::string field;
        for (int index = 0; index < 5; ++index)
            fields >> field;
        if (field == place) return true;
    }
    return false;
}

} // namespace

std::vector<std::string> rootMountWords() {
    if (geteuid() != 0 || isMounted("/")) return {};
    // In a mount namespace of its own, and upon /proc, which can be kept from passing a mount on to anybody else.
    return {
        "/usr/bin/unshare",
        "--mount",
        "--propagation",
        "unchanged",
        "--",
        "/bin/sh",
        "-c",
        "/usr/bin/mount --make-private /proc && /usr/bin/mount --rbind / /proc && exec /usr/sbin/chroot /proc \"$@\"",
        "sh"};
}

} // namespace bridge::office
