#pragma once

#include "app/shell/dialog_folder_chooser.h"
#ifdef HAVE_PORTAL
#include "adapters/portal/portal_folder_chooser.h"
#endif
#include "base/event_loop.h"

namespace bridge {

// The desktop's own chooser where it offers one, at that moment; else a dialog of ours.
class DesktopFolderChooser : public FolderChooser {
public:
    explicit DesktopFolderChooser(EventLoop& loop);

    Task<std::optional<std::string>> choose(FolderQuestion question) override;

private:
#ifdef HAVE_PORTAL
    PortalFolderChooser m_portal;
#endif
    DialogFolderChooser m_dialog;
};

} // namespace bridge
