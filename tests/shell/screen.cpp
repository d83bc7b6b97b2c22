#include "tests/shell/screen.h"

#include <cstdlib>
#include <sstream>
#include <xcb/xcb.h>

namespace bridge {

namespace {

const std::vector<std::string> serverCommand{"Xvfb",         "-displayfd", "1",   "-screen", "0",
                                             "1280x1000x24", "-nolisten",  "tcp", "-noreset"};

// Whether a client owns the selection by which such programs are known.
bool isOwned(const std::string& display, const std::string& name) {
    auto* const server = xcb_connect(display.c_str(), nullptr);
    auto* const atom = xcb_intern_atom_reply(
        server, xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.data()), nullptr);
    auto* const owner =
        atom ? xcb_get_selection_owner_reply(server, xcb_get_selection_owner(server, atom->atom), nullptr) : nullptr;
    const bool owned = owner && owner->owner != XCB_WINDOW_NONE;
    std::free(owner);
    std::free(atom);
    xcb_disconnect(server);
    return owned;
}

void waitForOwner(const std::string& display, const std::string& name) {
    if (!becomesTrue([&] { return isOwned(display, name); })) throw std::runtime_error(name + " has no owner");
}

xcb_window_t makeWindow(xcb_connection_t* server) {
    const auto* screen = xcb_setup_roots_iterator(xcb_get_setup(server)).data;
    const auto window = xcb_generate_id(server);
    xcb_create_window(server, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 100, 100, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    return window;
}

xcb_atom_t atom(xcb_connection_t* server, const std::string& name) {
    const auto question = xcb_intern_atom(server, 0, static_cast<uint16_t>(name.size()), name.data());
    auto* const reply = xcb_intern_atom_reply(server, question, nullptr);
    const auto known = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    std::free(reply);
    return known;
}

// A window manager says that it is there some time before it is, and a window that is shown in between may be lost.
void waitUntilWindowsAreManaged(const std::string& display) {
    auto* const server = xcb_connect(display.c_str(), nullptr);
    const auto window = makeWindow(server);
    const auto state = atom(server, "WM_STATE");
    const bool managed = becomesTrue([&] {
        xcb_map_window(server, window);
        const auto question = xcb_get_property(server, 0, window, state, state, 0, 1);
        auto* const reply = xcb_get_property_reply(server, question, nullptr);
        const bool has = reply && reply->type == state;
        std::free(reply);
        return has;
    });
    xcb_disconnect(server);
    if (!managed) throw std::runtime_error("the window manager manages nothing");
}

} // namespace

struct Screen::OtherWindow {
    xcb_connection_t* server;
};

void Screen::CloseOther::operator()(OtherWindow* window) const {
    xcb_disconnect(window->server);
    delete window;
}

std::string Screen::hindrance() {
    for (const auto* program : {"Xvfb", "openbox", "tint2", "xdotool"})
        if (!ChildProcess::isInstalled(program)) return std::string(program) + " is not installed";
    return {};
}

Screen::Screen(const TemporaryFolder& home)
    : m_home(home), m_server(serverCommand, {{"HOME", home.path()}}, ""), m_display(":" + m_server.readLine()) {
    if (m_display == ":") throw std::runtime_error("Xvfb does not start");
}

std::map<std::string, std::string> Screen::environment() const {
    return {{"DISPLAY", m_display},
            {"HOME", m_home.path()},
            {"XDG_CONFIG_HOME", m_home.file("config")},
            {"XDG_CACHE_HOME", m_home.file("cache")}};
}

void Screen::startWindowManager() {
    const std::vector<std::string> command{"sh", "-c", "exec openbox 2>/dev/null"};
    m_manager.emplace(command, environment(), "");
    waitForOwner(m_display, "WM_S0");
    waitUntilWindowsAreManaged(m_display);
}

void Screen::startPanel() {
    const auto settings = m_home.file("tint2rc");
    putFile(settings, "panel_items = TS\npanel_size = 100% 30\npanel_position = bottom center horizontal\n"
                      "systray_padding = 4 4 4\nsystray_icon_size = 22\n");
    const std::vector<std::string> command{"sh", "-c", "exec tint2 -c \"$0\" >/dev/null 2>&1", settings};
    m_panel.emplace(command, environment(), "");
    waitForOwner(m_display, "_NET_SYSTEM_TRAY_S0");
}

std::string Screen::tell(const std::vector<std::string>& words) {
    std::vector<std::string> command{"sh", "-c", "xdotool \"$@\" 2>/dev/null; echo end", "xdotool"};
    command.insert(command.end(), words.begin(), words.end());
    ChildProcess tool(command, environment(), "");
    std::string answer;
    for (auto line = tool.readLine(); line != "end"; line = tool.readLine())
        answer += line + '\n';
    return answer;
}

std::optional<WindowPlace> Screen::find(const std::vector<std::string>& which, bool (*isWanted)(const WindowPlace&)) {
    std::vector<std::string> words{"search"};
    words.insert(words.end(), which.begin(), which.end());
    std::istringstream windows(tell(words));
    for (std::string window; std::getline(windows, window);) {
        std::istringstream lines(tell({"getwindowgeometry", "--shell", window}));
        std::map<std::string, int> numbers;
        for (std::string line; std::getline(lines, line);)
            if (const auto end = line.find('='); end != line.npos)
                numbers[line.substr(0, end)] = std::atoi(line.c_str() + end + 1);
        const WindowPlace place{numbers["X"], numbers["Y"], numbers["WIDTH"], numbers["HEIGHT"]};
        if (isWanted(place)) return place;
    }
    return std::nullopt;
}

std::optional<WindowPlace> Screen::popover() {
    return find({"--onlyvisible", "--name", "^Brindlefox Apple Bridge$"},
                [](const WindowPlace& place) { return place.width > 100; });
}

std::optional<WindowPlace> Screen::icon() {
    // Until the panel has taken it, it is a window in the corner. A panel that paints icons itself keeps it unseen.
    return find({"--class", "brindlefox-apple-bridge"},
                [](const WindowPlace& place) { return place.width < 100 && place.y > 900; });
}

void Screen::click(const WindowPlace& place) {
    tell({"mousemove", std::to_string(place.x + place.width / 2), std::to_string(place.y + place.height / 2), "click",
          "1"});
}

void Screen::press(const std::string& key) {
    tell({"key", key});
}

void Screen::type(const std::string& text) {
    tell({"type", text});
}

void Screen::openAnotherWindow() {
    auto* const server = xcb_connect(m_display.c_str(), nullptr);
    m_other.reset(new OtherWindow{server});
    xcb_map_window(server, makeWindow(server));
    xcb_flush(server);
}

} // namespace bridge
