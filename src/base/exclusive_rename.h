#pragma once

#include <string>

namespace bridge {

// Moves the entry `from` of one open folder to `to` of another, both single path components, without ever replacing
// anything. Returns 0 or an errno: EEXIST when something stands there, EXDEV when the folders lie on two volumes.
//
// On a file system that can't promise this in one step (some network and user-space ones) a file still never replaces
// anything; a folder could take the place of an empty folder that appears in the last moment.
int renameExclusively(int fromFolder, const std::string& from, int toFolder, const std::string& to);

} // namespace bridge
