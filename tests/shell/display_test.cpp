#include "app/shell/display.h"

#include "base/file_descriptor.h"
#include "base/log.h"
#include "tests/support/temporary_folder.h"

#include <QLibraryInfo>
#include <QString>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace bridge {
namespace {

// A session whose Wayland compositor listens, and which has no X server.
struct WaylandDisplay : testing::Test {
    TemporaryFolder folder;
    FileDescriptor compositor{::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    FileDescriptor said{open(folder.file("log").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600)};
    std::map<const char*, QByteArray> before;

    WaylandDisplay() {
        for (const auto* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            before[name] = qgetenv(name);
            qunsetenv(name);
        }
        const auto path = folder.file("wayland");
        sockaddr_un place{};
        place.sun_family = AF_UNIX;
        path.copy(place.sun_path, sizeof place.sun_path - 1);
        EXPECT_EQ(bind(compositor.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place), 0);
        EXPECT_EQ(listen(compositor.get(), 1), 0);
        qputenv("WAYLAND_DISPLAY", path.c_str());
        log::writeTo(said.get());
    }
    ~WaylandDisplay() override {
        restoreDisplayChoice();
        for (const auto& [name, value] : before) {
            if (value.isEmpty())
                qunsetenv(name);
            else
                qputenv(name, value);
        }
        log::writeTo(STDERR_FILENO);
    }
    static bool hasPlugin() {
        const auto plugins = QLibraryInfo::path(QLibraryInfo::PluginsPath).toStdString();
        return std::filesystem::exists(plugins + "/platforms/libqwayland-generic.so");
    }
    bool saysWhatIsMissing() { return getFile(folder / "log").find("install qt6-wayland") != std::string::npos; }
};

TEST_F(WaylandDisplay, IsUsedOrTheLogSaysWhatIsMissing) {
    EXPECT_EQ(findDisplay(), hasPlugin());
    EXPECT_EQ(saysWhatIsMissing(), !hasPlugin());
    EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), hasPlugin() ? "wayland" : "");
    restoreDisplayChoice();
    EXPECT_FALSE(qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
}

TEST_F(WaylandDisplay, LeavesWhatTheUserHasChosen) {
    for (const auto* choice : {"offscreen", "wayland;xcb"}) {
        qputenv("QT_QPA_PLATFORM", choice);
        findDisplay();
        restoreDisplayChoice();
        EXPECT_EQ(qgetenv("QT_QPA_PLATFORM"), choice);
    }
}

} // namespace
} // namespace bridge
