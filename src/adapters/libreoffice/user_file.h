#pragma once

#include "base/file_descriptor.h"

#include <cstdint>
#include <string>
#include <sys/stat.h>

// Files of the user, which no program but the bridge itself ever opens. Everything here throws ScriptError with a
// message that names the file.
namespace bridge::office {

// Equal as long as nobody has replaced or changed the file.
struct FileIdentity {
    dev_t device = 0;
    ino_t inode = 0;
    int64_t size = 0, seconds = 0, nanoseconds = 0;
    bool operator==(const FileIdentity&) const = default;
};

struct UserFile {
    FileDescriptor file;
    FileIdentity identity;
};

// "Plan.numbers", in quotation marks, as messages have it.
std::string quotedName(const std::string& path);

// Refuses what is no regular file, links included, and what is larger than that.
UserFile openUserFile(const std::string& path, int64_t largest);
// A copy into an open folder.
void copyFile(const UserFile& from, int folder, const std::string& name);
// What LibreOffice has written there; never what a link leads to.
std::string readStored(int folder, const std::string& name);

// Throws when the file is not as it was, or another office program has it open.
void checkUntouched(const std::string& path, const FileIdentity& identity);
// Throws when there is something at the path, or no folder for it.
void checkFree(const std::string& path);

// Both write the file whole or not at all, and leave nothing beside it when they fail.
FileIdentity replaceUserFile(const std::string& path, const FileIdentity& identity, const std::string& content);
FileIdentity writeNewFile(const std::string& path, const std::string& content);

} // namespace bridge::office
