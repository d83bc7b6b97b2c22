#include "adapters/xdg/desktop_settings.h"

#include "base/file_descriptor.h"
#include "tests/adapters/xdg/desktop_site.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sstream>
#include <sys/wait.h>

namespace bridge {
namespace {

class Settings : public testing::Test {
protected:
    // What is started on that desktop; "none" when it has no such page.
    std::string privacyPage(const std::string& desktop) {
        site.variables["XDG_CURRENT_DESKTOP"] = desktop;
        try {
            settings.open();
        } catch (const NoSuchPage&) {
            return "none";
        }
        return site.startedProgram();
    }
    std::string loginPage(const std::string& desktop) {
        site.variables["XDG_CURRENT_DESKTOP"] = desktop;
        try {
            settings.openLoginItems();
        } catch (const NoSuchPage&) {
            return "none";
        }
        return site.startedProgram();
    }

    DesktopSite site;
    DesktopSettings settings{site.environment()};
};

TEST_F(Settings, OfGNOMEHaveThePageOfTheirVersion) {
    EXPECT_EQ(privacyPage("GNOME"), "none");
    site.addProgram("gnome-control-center");
    EXPECT_EQ(privacyPage("GNOME"), "gnome-control-center|");
    site.addDesktopFile("gnome-location-panel.desktop");
    EXPECT_EQ(privacyPage("GNOME"), "gnome-control-center|location|");
    site.addDesktopFile("gnome-privacy-panel.desktop");
    EXPECT_EQ(privacyPage("ubuntu:GNOME"), "gnome-control-center|privacy|");
}

TEST_F(Settings, OfOtherDesktopsArePagesOfTheirOwn) {
    site.addProgram("gnome-control-center");
    site.addProgram("systemsettings");
    EXPECT_EQ(privacyPage("KDE"), "systemsettings|");
    site.addDesktopFile("kcm_app-permissions.desktop");
    EXPECT_EQ(privacyPage("KDE"), "systemsettings|kcm_app-permissions|");
    EXPECT_EQ(privacyPage("X-Cinnamon"), "none");
    site.addProgram("cinnamon-settings");
    EXPECT_EQ(privacyPage("X-Cinnamon"), "cinnamon-settings|privacy|");
}

TEST_F(Settings, AnOlderNameOfTheProgramWillDo) {
    site.addProgram("systemsettings5");
    EXPECT_EQ(privacyPage("KDE"), "systemsettings5|");
}

TEST_F(Settings, ThatADesktopHasNotAreSaidToBeInTheDashboard) {
    site.addProgram("gnome-control-center");
    for (const auto* desktop : {"XFCE", "MATE", "sway", "", ":", "gnome", "GNOME-Classic", "../bin"})
        EXPECT_EQ(privacyPage(desktop), "none") << desktop;
    try {
        settings.open();
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "This desktop has no page of privacy settings. What the agent may use is decided "
                                   "here, with the switches and buttons of each group.");
    }
}

TEST_F(Settings, OfWhatStartsAtLoginAreFoundOnEachDesktop) {
    for (const auto* program : {"gnome-tweaks", "systemsettings", "xfce4-session-settings", "cinnamon-settings",
                                "mate-session-properties", "lxqt-config-session"})
        site.addProgram(program);
    EXPECT_EQ(loginPage("GNOME"), "gnome-tweaks|");
    EXPECT_EQ(loginPage("KDE"), "none");
    site.addDesktopFile("kcm_autostart.desktop");
    EXPECT_EQ(loginPage("KDE"), "systemsettings|kcm_autostart|");
    EXPECT_EQ(loginPage("XFCE"), "xfce4-session-settings|");
    EXPECT_EQ(loginPage("X-Cinnamon"), "cinnamon-settings|startup|");
    EXPECT_EQ(loginPage("MATE"), "mate-session-properties|");
    EXPECT_EQ(loginPage("LXQt"), "lxqt-config-session|");
    EXPECT_EQ(loginPage("sway"), "none");
}

TEST_F(Settings, AreFoundInTheFirstFolderThatHasTheProgram) {
    site.addProgram("gnome-control-center");
    for (const auto* folder : {"first", "second"})
        std::filesystem::create_directory(site.folder / folder);
    putFile(site.folder / "first/gnome-control-center", "not to be run");
    std::filesystem::create_directory(site.folder / "second/gnome-control-center");
    site.variables["PATH"] =
        "bin:" + site.folder.file("first") + "::" + site.folder.file("second") + ":" + site.folder.file("bin");
    EXPECT_EQ(privacyPage("GNOME"), "gnome-control-center|");
    site.variables["PATH"] = site.folder.file("first");
    EXPECT_EQ(privacyPage("GNOME"), "none");
}

TEST_F(Settings, AProgramThatCanNotBeStartedIsAnError) {
    const auto program = site.addProgram("gnome-control-center");
    putFile(program, "#!/no/such/interpreter\n");
    site.variables["XDG_CURRENT_DESKTOP"] = "GNOME";
    try {
        settings.open();
        FAIL();
    } catch (const PlatformError& error) {
        EXPECT_STREQ(error.what(), "The program could not be started: No such file or directory");
    }
}

TEST_F(Settings, AreAProgramThatGoesItsOwnWay) {
    const auto facts = site.folder.file("facts");
    ASSERT_EQ(mkfifo(facts.c_str(), 0600), 0);
    // Its process, its session and what it complains to, once nobody waits for it any more.
    site.addProgram("gnome-control-center",
                    "cut -d ' ' -f 1,6 /proc/$$/stat > '" + facts + "'\nreadlink /proc/$$/fd/2 >> '" + facts + "'\n");
    const FileDescriptor keptOpen(open(facts.c_str(), O_RDWR | O_CLOEXEC));
    EXPECT_EQ(privacyPage("GNOME"), "gnome-control-center|");
    std::string told;
    while (std::count(told.begin(), told.end(), '\n') < 2) {
        char buffer[256];
        const ssize_t length = read(keptOpen.get(), buffer, sizeof buffer);
        ASSERT_GT(length, 0);
        told.append(buffer, static_cast<size_t>(length));
    }
    std::istringstream text(told);
    pid_t process = 0, session = 0;
    std::string output;
    text >> process >> session >> output;
    EXPECT_NE(session, getsid(0));
    EXPECT_EQ(output, "/dev/null");
    // Neither it nor what started it is left for us to wait for.
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace
} // namespace bridge
