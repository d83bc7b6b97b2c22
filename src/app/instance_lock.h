#pragma once

#include "base/file_descriptor.h"

#include <optional>
#include <string>

namespace bridge {

// The folder in which the bridges of one user find each other, only his: below $XDG_RUNTIME_DIR, or `profile` where
// there is none or it is another's. It is made when it is missing. Throws PlatformError when it can't be.
std::string instanceFolder(const std::string& profile);

// Held by the one bridge that runs. The system takes it from a process that ends, however it does.
class InstanceLock {
public:
    // Nothing when another holds it. Throws PlatformError when there can be no lock.
    static std::optional<InstanceLock> take(const std::string& folder);

    // The lock of a profile, which also those heed who don't find each other because their instance folders differ. The
    // folder is made when it is missing. Throws PlatformError when another bridge has it. Nothing, and a line in the
    // log, where there can be no lock: a profile on a full disk is still used.
    static std::optional<InstanceLock> takeOfProfile(const std::string& profile);

private:
    static std::optional<InstanceLock> takeFile(const std::string& path);
    explicit InstanceLock(FileDescriptor file) : m_file(std::move(file)) {}

    FileDescriptor m_file;
};

} // namespace bridge
