#include "app/shell/x11.h"

#include <QGuiApplication>
#include <QWindow>

#include <array>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <xcb/xcb.h>

namespace bridge {

namespace {

struct Freed {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename Reply> using ReplyPointer = std::unique_ptr<Reply, Freed>;

// The offscreen platform answers with an interface too, and nothing behind it.
xcb_connection_t* server() {
    if (QGuiApplication::platformName() != "xcb") return nullptr;
    const auto* application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return application ? application->connection() : nullptr;
}

xcb_atom_t atom(xcb_connection_t* server, std::string_view name) {
    const auto question = xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.data());
    const ReplyPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(server, question, nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

} // namespace

void keepOutOfTaskbar(QWindow& window) {
    auto* const connection = server();
    if (!connection) return;
    const std::array states{atom(connection, "_NET_WM_STATE_SKIP_TASKBAR"),
                            atom(connection, "_NET_WM_STATE_SKIP_PAGER")};
    constexpr uint8_t bits = 32;
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(window.winId()),
                        atom(connection, "_NET_WM_STATE"), XCB_ATOM_ATOM, bits, states.size(), states.data());
}

bool blendsWindows() {
    auto* const connection = server();
    // Wayland always does.
    if (!connection) return QGuiApplication::platformName().startsWith("wayland");
    const auto question = xcb_get_selection_owner(connection, atom(connection, "_NET_WM_CM_S0"));
    const ReplyPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(connection, question, nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

} // namespace bridge
