#include "app/shell/desktop_folder_chooser.h"

#include <QGuiApplication>
#include <QWindow>

namespace bridge {

namespace {

// The window that the user has come from, as the portal takes it.
[[maybe_unused]] std::string windowName() {
    const auto* window = QGuiApplication::focusWindow();
    if (!window || QGuiApplication::platformName() != "xcb") return {};
    return "x11:" + QString::number(window->winId(), 16).toStdString();
}

} // namespace

#ifdef HAVE_PORTAL

DesktopFolderChooser::DesktopFolderChooser(EventLoop& loop) : m_portal(loop, windowName) {}

Task<std::optional<std::string>> DesktopFolderChooser::choose(FolderQuestion question) {
    try {
        auto chosen = co_await m_portal.choose(question);
        co_return chosen;
    } catch (const NoPortal&) {
    }
    auto chosen = co_await m_dialog.choose(std::move(question));
    co_return chosen;
}

#else

DesktopFolderChooser::DesktopFolderChooser(EventLoop&) {}

Task<std::optional<std::string>> DesktopFolderChooser::choose(FolderQuestion question) {
    return m_dialog.choose(std::move(question));
}

#endif

} // namespace bridge
