#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bridge {

// Where the freedesktop.org Base Directory standard keeps a user's files. Nothing is created.
class XdgPaths {
public:
    // What an environment variable holds; nothing when it isn't set.
    using Environment = std::function<std::optional<std::string>(const char* name)>;
    static std::optional<std::string> ofProcess(const char* name);

    // Reads the environment once. A variable that is empty or holds no absolute path counts as not set. The home folder
    // comes from HOME, else from the user database; throws PlatformError when neither knows it.
    explicit XdgPaths(const Environment& environment = ofProcess);

    std::string dataHome;
    std::string configHome;
    // Below the user's own, the most important first.
    std::vector<std::string> dataDirectories;
    std::vector<std::string> configDirectories;

    std::string homeTrash() const { return dataHome + "/Trash"; }
};

} // namespace bridge
