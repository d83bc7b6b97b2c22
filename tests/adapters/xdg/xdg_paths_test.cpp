#include "adapters/xdg/xdg_paths.h"

#include <gtest/gtest.h>
#include <map>

namespace bridge {
namespace {

XdgPaths pathsIn(std::map<std::string, std::string> variables) {
    return XdgPaths([variables = std::move(variables)](const char* name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        if (found == variables.end()) return std::nullopt;
        return found->second;
    });
}

TEST(XdgPaths, LieInTheHomeFolderUnlessTold) {
    const auto paths = pathsIn({{"HOME", "/home/ada"}});
    EXPECT_EQ(paths.configHome, "/home/ada/.config");
    EXPECT_EQ(paths.dataHome, "/home/ada/.local/share");
    EXPECT_EQ(paths.stateHome, "/home/ada/.local/state");
    EXPECT_EQ(paths.cacheHome, "/home/ada/.cache");
    EXPECT_EQ(paths.runtimeHome, std::nullopt);
    EXPECT_EQ(paths.homeTrash(), "/home/ada/.local/share/Trash");
}

TEST(XdgPaths, FollowTheEnvironment) {
    const auto paths = pathsIn({{"HOME", "/home/ada"},
                                {"XDG_CONFIG_HOME", "/c"},
                                {"XDG_DATA_HOME", "/d/"},
                                {"XDG_STATE_HOME", "/s"},
                                {"XDG_CACHE_HOME", "/k"},
                                {"XDG_RUNTIME_DIR", "/run/user/7"}});
    EXPECT_EQ(paths.configHome, "/c");
    EXPECT_EQ(paths.dataHome, "/d");
    EXPECT_EQ(paths.stateHome, "/s");
    EXPECT_EQ(paths.cacheHome, "/k");
    EXPECT_EQ(paths.runtimeHome, "/run/user/7");
}

TEST(XdgPaths, IgnoreRelativeAndEmptyValues) {
    const auto paths = pathsIn({{"HOME", "/home/ada/"},
                                {"XDG_CONFIG_HOME", "config"},
                                {"XDG_DATA_HOME", ""},
                                {"XDG_STATE_HOME", "./state"},
                                {"XDG_CACHE_HOME", "~/cache"},
                                {"XDG_RUNTIME_DIR", "run"}});
    EXPECT_EQ(paths.configHome, "/home/ada/.config");
    EXPECT_EQ(paths.dataHome, "/home/ada/.local/share");
    EXPECT_EQ(paths.stateHome, "/home/ada/.local/state");
    EXPECT_EQ(paths.cacheHome, "/home/ada/.cache");
    EXPECT_EQ(paths.runtimeHome, std::nullopt);
}

TEST(XdgPaths, HaveNoDoubledSlashWhenHomeIsTheRoot) {
    EXPECT_EQ(pathsIn({{"HOME", "/"}}).configHome, "/.config");
}

} // namespace
} // namespace bridge
