#pragma once

#include "bridges/files/folder_access.h"
#include "bridges/files/text_file.h"
#include "platform/trash.h"

namespace bridge {

// Moves an existing item inside a root, or renames it, and returns its status at the new place. What is at the
// destination goes to the Trash first when it may be overwritten, and stays there if the move then fails.
//
// Throws AppleBridgeError (the root itself, the same place, a folder into itself or over one that holds it, something
// at the destination that may not be overwritten), PlatformError, PathChanged.
struct stat moveItem(const OpenRoot& root, const ConfinedPath& source, const ConfinedPath& destination,
                     Overwrite overwrite, Trash& trash);

// Moves an existing item, not the root, to the Trash.
void trashItem(const OpenRoot& root, const ConfinedPath& path, Trash& trash);

} // namespace bridge
