#pragma once

#include "adapters/dbus/glib_pointer.h"
#include "platform/folder_chooser.h"

namespace bridge {

// Blocks until the user has answered; nothing also when `cancellable` was cancelled, which takes the dialog away.
// Throws as PortalFolderChooser does. Any thread.
std::optional<std::string> askPortal(const FolderQuestion& question, const std::string& parentWindow,
                                     GCancellable* cancellable);

} // namespace bridge
