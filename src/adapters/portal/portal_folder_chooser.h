#pragma once

#include "base/event_loop.h"
#include "base/platform_error.h"
#include "base/worker.h"
#include "platform/folder_chooser.h"

#include <functional>
#include <optional>

namespace bridge {

// The desktop has no portal that lets the user choose a folder.
class NoPortal : public PlatformError {
public:
    using PlatformError::PlatformError;
};

// The desktop's own chooser, by xdg-desktop-portal. Its dialogs have no place for a message, so that stands in the
// title behind what is the title, where there is room for both.
class PortalFolderChooser : public FolderChooser {
public:
    // Names the window that the dialog belongs to, as the portal takes it, such as "x11:2a00007"; empty for none. Asked
    // at each choice, on the loop's thread.
    using ParentWindow = std::function<std::string()>;

    // The loop outlives it.
    explicit PortalFolderChooser(EventLoop& loop, ParentWindow parentWindow = {});

    // Throws NoPortal; PlatformError when the dialog fails, or goes away without an answer, or the chosen folder is
    // none of this computer. A dropped task takes the dialog away.
    Task<std::optional<std::string>> choose(FolderQuestion question) override;

private:
    EventLoop& m_loop;
    ParentWindow m_parentWindow;
    std::optional<Worker> m_worker; // since the first choice
};

} // namespace bridge
