#include "app/shell/display.h"

#include "base/file_descriptor.h"
#include "base/log.h"

#include <QFileInfo>
#include <QLibraryInfo>
#include <QString>

#include <cstring>
#include <optional>
#include <sys/socket.h>
#include <sys/un.h>
#include <xcb/xcb.h>

namespace bridge {

namespace {

constexpr auto choice = "QT_QPA_PLATFORM";

// What stood there before, empty for nothing; none while it still stands there.
std::optional<QByteArray> replaced;

bool choose(const char* platform) {
    replaced = qgetenv(choice);
    return qputenv(choice, platform);
}

bool hasPlugin(const char* name) {
    const auto folder = QLibraryInfo::path(QLibraryInfo::PluginsPath);
    return QFileInfo::exists(folder + "/platforms/lib" + name + ".so");
}

// The whole greeting: a server that listens may still turn us away.
bool xServerAnswers() {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) return false;
    auto* const connection = xcb_connect(nullptr, nullptr);
    const bool answers = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return answers;
}

bool waylandAnswers() {
    auto path = qEnvironmentVariable("WAYLAND_DISPLAY");
    if (path.isEmpty()) return false;
    if (!path.startsWith('/')) path = qEnvironmentVariable("XDG_RUNTIME_DIR") + '/' + path;
    const auto bytes = path.toLocal8Bit();
    sockaddr_un place{};
    place.sun_family = AF_UNIX;
    if (static_cast<size_t>(bytes.size()) >= sizeof place.sun_path) return false;
    std::memcpy(place.sun_path, bytes.constData(), static_cast<size_t>(bytes.size()));
    const FileDescriptor socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
    return connect(socket.get(), reinterpret_cast<const sockaddr*>(&place), sizeof place) == 0;
}

} // namespace

bool findDisplay() {
    const auto wanted = qEnvironmentVariable(choice);
    if (wanted == "xcb") return xServerAnswers();
    if (wanted.startsWith("wayland") && !wanted.contains(';')) return waylandAnswers();
    if (!wanted.isEmpty() && !wanted.contains(';')) return true;
    // A Wayland client may not say where its window goes, so X comes first, also where Wayland offers it.
    if (xServerAnswers() && hasPlugin("qxcb")) return choose("xcb");
    if (!waylandAnswers()) return false;
    if (hasPlugin("qwayland-generic")) return choose("wayland");
    log::note("There is a Wayland display, but what Qt needs to use it is missing: install qt6-wayland.");
    return false;
}

void restoreDisplayChoice() {
    const auto before = std::exchange(replaced, std::nullopt);
    if (!before) return;
    if (before->isEmpty())
        qunsetenv(choice);
    else
        qputenv(choice, *before);
}

} // namespace bridge
