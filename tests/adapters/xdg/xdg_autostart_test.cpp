#include "adapters/xdg/xdg_autostart.h"

#include "tests/adapters/xdg/desktop_site.h"

#include <fcntl.h>
#include <gmock/gmock.h>

namespace bridge {
namespace {

using Status = LoginItemStatus;

class Autostart : public testing::Test {
protected:
    XdgAutostart item() const { return XdgAutostart(program, {"--background"}, site.environment()); }
    Status status() const { return item().status(); }
    Status statusOf(const std::string& keys) {
        std::filesystem::create_directories(std::filesystem::path(file).parent_path());
        putFile(file, "[Desktop Entry]\nType=Application\nExec=/bin/true\n" + keys);
        return status();
    }
    void putSystemEntry(const std::string& keys) {
        putFile(systemFile, "[Desktop Entry]\nType=Application\nExec=/bin/true\n" + keys);
    }
    DesktopEntry entry() const { return DesktopEntry(getFile(file)); }

    DesktopSite site;
    std::string program = site.addProgram("brindlefox-apple-bridge");
    const std::string file = site.folder.file("home/.config/autostart/brindlefox-apple-bridge.desktop");
    const std::string systemFile = site.folder.file("xdg/autostart/brindlefox-apple-bridge.desktop");
};

TEST_F(Autostart, IsAWholeEntryInTheUsersFolder) {
    item().registerItem();
    EXPECT_EQ(entry().string("Type"), "Application");
    EXPECT_EQ(entry().string("Name"), "Brindlefox Apple Bridge");
    EXPECT_EQ(entry().string("Exec"), program + " --background");
    EXPECT_EQ(entry().string("TryExec"), program);
    EXPECT_EQ(entry().string("Hidden"), std::nullopt);
    struct stat status;
    ASSERT_EQ(stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0644U);
    const auto folder = std::filesystem::path(file).parent_path();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

TEST_F(Autostart, LiesWhereTheEnvironmentSays) {
    site.variables["XDG_CONFIG_HOME"] = site.folder.file("elsewhere/config");
    item().registerItem();
    EXPECT_TRUE(std::filesystem::exists(site.folder / "elsewhere/config/autostart/brindlefox-apple-bridge.desktop"));
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, LeavesTheEntriesOfOthersAlone) {
    item().registerItem();
    const auto other = std::filesystem::path(file).parent_path() / "other.desktop";
    putFile(other, "x");
    item().unregisterItem();
    EXPECT_FALSE(std::filesystem::exists(file));
    EXPECT_EQ(getFile(other), "x");
}

TEST_F(Autostart, SwitchedOffByADesktopRequiresApproval) {
    for (const auto* keys :
         {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "X-MATE-Autostart-enabled=false\n", "Hidden = true \n"})
        EXPECT_EQ(statusOf(keys), Status::requiresApproval) << keys;
    for (const auto* keys : {"", "Hidden=false\n", "X-GNOME-Autostart-enabled=true\n", "#Hidden=true\n",
                             "[Desktop Action off]\nHidden=true\n"})
        EXPECT_EQ(statusOf(keys), Status::enabled) << keys;
}

TEST_F(Autostart, IsOfThisDesktopOnly) {
    site.variables["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
    EXPECT_EQ(statusOf("OnlyShowIn=GNOME;\n"), Status::enabled);
    EXPECT_EQ(statusOf("OnlyShowIn=KDE;\n"), Status::notRegistered);
    EXPECT_EQ(statusOf("NotShowIn=KDE;\n"), Status::enabled);
    EXPECT_EQ(statusOf("NotShowIn=GNOME;\n"), Status::notRegistered);
    item().registerItem();
    EXPECT_EQ(status(), Status::enabled);
    site.variables.erase("XDG_CURRENT_DESKTOP");
    EXPECT_EQ(statusOf("OnlyShowIn=KDE;\n"), Status::notRegistered);
}

TEST_F(Autostart, WhatCanNotStartIsNotRegistered) {
    EXPECT_EQ(statusOf("TryExec=" + site.folder.file("bin/gone") + "\n"), Status::notRegistered);
    EXPECT_EQ(statusOf("TryExec=gone\n"), Status::notRegistered);
    EXPECT_EQ(statusOf("TryExec=brindlefox-apple-bridge\n"), Status::enabled);
    EXPECT_EQ(statusOf("Type=Link\n"), Status::notRegistered);
    EXPECT_EQ(statusOf("Exec=\n"), Status::notRegistered);
    item().registerItem();
    EXPECT_EQ(status(), Status::enabled);
}

TEST_F(Autostart, AProgramThatMovedIsRegisteredAnew) {
    item().registerItem();
    std::filesystem::remove(program);
    program = site.addProgram("moved here");
    EXPECT_EQ(status(), Status::notRegistered);
    item().registerItem();
    EXPECT_EQ(entry().string("TryExec"), program);
    EXPECT_EQ(status(), Status::enabled);
}

TEST_F(Autostart, WhatIsNoEntryIsNotRegistered) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    for (const std::string& text : {std::string(), std::string("nonsense"), std::string("\0\xff", 2),
                                    "[Desktop Entry]\nName=x\n" + std::string(100'000, 'x') + "\nExec=/bin/true\n"}) {
        putFile(file, text);
        EXPECT_EQ(status(), Status::notRegistered);
    }
    std::filesystem::remove(file);
    ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(status(), Status::notRegistered);
    std::filesystem::remove(file);
    std::filesystem::create_symlink("/dev/null", file);
    EXPECT_EQ(status(), Status::notRegistered);
    item().registerItem();
    EXPECT_FALSE(std::filesystem::is_symlink(file));
    EXPECT_EQ(status(), Status::enabled);
}

TEST_F(Autostart, AFolderInTheWayIsAnError) {
    std::filesystem::create_directories(file);
    EXPECT_EQ(status(), Status::notRegistered);
    EXPECT_THROW(item().registerItem(), PlatformError);
    EXPECT_THROW(item().unregisterItem(), PlatformError);
    EXPECT_EQ(status(), Status::notRegistered);
}

TEST_F(Autostart, AnEntryOfTheSystemCounts) {
    putSystemEntry("");
    EXPECT_EQ(status(), Status::enabled);
    item().registerItem();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, AnEntryOfTheSystemIsHiddenByACopy) {
    putSystemEntry("");
    item().unregisterItem();
    EXPECT_TRUE(entry().boolean("Hidden", false));
    EXPECT_EQ(status(), Status::notRegistered);
    item().registerItem();
    EXPECT_EQ(status(), Status::enabled);
    EXPECT_FALSE(entry().boolean("Hidden", false));
}

TEST_F(Autostart, ACopyThatHidesTheSystemsMayBeSwitchedOnElsewhere) {
    putSystemEntry("");
    item().unregisterItem();
    auto text = getFile(file);
    text.replace(text.find("Hidden=true"), 11, "Hidden=false");
    putFile(file, text);
    EXPECT_EQ(status(), Status::enabled);
    EXPECT_EQ(entry().string("Exec"), program + " --background");
}

TEST_F(Autostart, TheUsersEntryGoesOverTheSystems) {
    putSystemEntry("");
    EXPECT_EQ(statusOf("Hidden=true\n"), Status::requiresApproval);
    item().unregisterItem();
    EXPECT_EQ(status(), Status::notRegistered);
}

TEST_F(Autostart, AnEntryOfTheSystemThatIsOffIsNone) {
    for (const auto* keys : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n", "TryExec=gone\n"}) {
        putSystemEntry(keys);
        EXPECT_EQ(status(), Status::notRegistered) << keys;
    }
    item().registerItem();
    item().unregisterItem();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, IsNotFoundWithoutItsProgram) {
    for (const auto& path : {std::string(), std::string("brindlefox-apple-bridge"), site.folder.file("bin/gone"),
                             site.folder.file("bin")}) {
        program = path;
        EXPECT_EQ(status(), Status::notFound) << path;
        EXPECT_THROW(item().registerItem(), PlatformError);
    }
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, IsNotFoundWhereNoFolderCanBe) {
    putFile(site.folder / "a file", "");
    site.variables["XDG_CONFIG_HOME"] = site.folder.file("a file/config");
    EXPECT_EQ(status(), Status::notFound);
    EXPECT_THROW(item().registerItem(), PlatformError);
}

TEST_F(Autostart, IsTakenAwayAlsoWhenTheProgramIsGone) {
    item().registerItem();
    program.clear();
    item().unregisterItem();
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, APathThatIsNoTextIsRefused) {
    const auto odd = site.folder.file("bin/caf\xe9");
    std::filesystem::copy(program, odd);
    program = odd;
    EXPECT_THROW(item().registerItem(), PlatformError);
    EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(Autostart, SaysWhichFileSwitchesItOffWhereNoPageDoes) {
    statusOf("Hidden=true\n");
    try {
        item().openLoginItemsSettings();
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("no page"));
        EXPECT_THAT(error.what(), testing::HasSubstr(file));
    }
}

} // namespace
} // namespace bridge
