#pragma once

#include "tests/support/becomes_true.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <memory>
#include <optional>

namespace bridge {

struct WindowPlace {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const WindowPlace&) const = default;
};

// An X server of the test's own, in memory, on a display that is free.
class Screen {
public:
    // Why there can be none on this machine.
    static std::string hindrance();

    explicit Screen(const TemporaryFolder& home);

    const std::string& display() const { return m_display; }
    // A window manager and a panel with a tray at the bottom; each returns when it is there.
    void startWindowManager();
    void startPanel();
    // As when the user logs out, or the machine's graphics crash.
    void end() { m_server.end(); }

    // The dashboard, and the icon in the tray, where they are to be seen.
    std::optional<WindowPlace> popover();
    std::optional<WindowPlace> icon();
    void click(const WindowPlace& place);
    void press(const std::string& key);
    void type(const std::string& text);
    // Another program opens a window, and gets the keyboard with it.
    void openAnotherWindow();

private:
    std::string tell(const std::vector<std::string>& words);
    std::optional<WindowPlace> find(const std::vector<std::string>& which, bool (*isWanted)(const WindowPlace&));
    std::map<std::string, std::string> environment() const;

    struct OtherWindow;
    struct CloseOther {
        void operator()(OtherWindow* window) const;
    };

    const TemporaryFolder& m_home;
    ChildProcess m_server;
    std::string m_display;
    std::optional<ChildProcess> m_manager;
    std::optional<ChildProcess> m_panel;
    std::unique_ptr<OtherWindow, CloseOther> m_other;
};

} // namespace bridge
