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
    EXPECT_EQ(paths.dataHome, "/home/ada/.local/share");
    EXPECT_EQ(paths.homeTrash(), "/home/ada/.local/share/Trash");
    EXPECT_EQ(paths.configHome, "/home/ada/.config");
}

TEST(XdgPaths, FollowTheEnvironment) {
    EXPECT_EQ(pathsIn({{"HOME", "/home/ada"}, {"XDG_DATA_HOME", "/d/"}}).dataHome, "/d");
    EXPECT_EQ(pathsIn({{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "/c/"}}).configHome, "/c");
}

TEST(XdgPaths, IgnoreRelativeAndEmptyValues) {
    for (const auto* value : {"", "data", "./data", "~/data"})
        EXPECT_EQ(pathsIn({{"HOME", "/home/ada/"}, {"XDG_DATA_HOME", value}}).dataHome, "/home/ada/.local/share")
            << value;
}

TEST(XdgPaths, OfSettingsLieBesideTheData) {
    EXPECT_EQ(pathsIn({{"HOME", "/home/ada"}}).configHome, "/home/ada/.config");
    EXPECT_EQ(pathsIn({{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "/c/"}}).configHome, "/c");
    EXPECT_EQ(pathsIn({{"HOME", "/home/ada"}, {"XDG_CONFIG_HOME", "c"}}).configHome, "/home/ada/.config");
}

TEST(XdgPaths, OfTheSystemAreAList) {
    using Strings = std::vector<std::string>;
    const auto usual = pathsIn({{"HOME", "/home/ada"}, {"XDG_CONFIG_DIRS", ""}});
    EXPECT_EQ(usual.configDirectories, (Strings{"/etc/xdg"}));
    EXPECT_EQ(usual.dataDirectories, (Strings{"/usr/local/share", "/usr/share"}));
    const auto told = pathsIn({{"HOME", "/home/ada"}, {"XDG_CONFIG_DIRS", "/a/:b::/c"}, {"XDG_DATA_DIRS", "relative"}});
    EXPECT_EQ(told.configDirectories, (Strings{"/a", "/c"}));
    EXPECT_EQ(told.dataDirectories, Strings());
}

TEST(XdgPaths, HaveNoDoubledSlashWhenHomeIsTheRoot) {
    EXPECT_EQ(pathsIn({{"HOME", "/"}}).dataHome, "/.local/share");
}

} // namespace
} // namespace bridge
