#include "adapters/sqlite/database_error.h"

#include <cerrno>
#include <fmt/format.h>
#include <sqlite3.h>
#include <system_error>

namespace bridge {

namespace {

DatabaseTrouble troubleOf(int code, int systemError) {
    if (code == SQLITE_CONSTRAINT_UNIQUE || code == SQLITE_CONSTRAINT_PRIMARYKEY) return DatabaseTrouble::conflict;
    switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
    case SQLITE_PROTOCOL:
        return DatabaseTrouble::busy;
    case SQLITE_FULL:
        return DatabaseTrouble::full;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
        return DatabaseTrouble::damaged;
    case SQLITE_READONLY:
        return DatabaseTrouble::readOnly;
    case SQLITE_PERM:
        return DatabaseTrouble::notPermitted;
    case SQLITE_IOERR:
        // SQLite knows ENOSPC alone, and not while it writes the index of the journal.
        if (systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG) return DatabaseTrouble::full;
        return DatabaseTrouble::other;
    case SQLITE_CANTOPEN:
        if (systemError == EACCES || systemError == EPERM) return DatabaseTrouble::notPermitted;
        if (systemError == ENOSPC || systemError == EDQUOT) return DatabaseTrouble::full;
        if (systemError == EROFS) return DatabaseTrouble::readOnly;
        return DatabaseTrouble::other;
    default:
        return DatabaseTrouble::other;
    }
}

std::string sentence(DatabaseTrouble trouble, int code, int systemError, std::string_view contents) {
    switch (trouble) {
    case DatabaseTrouble::busy:
        return fmt::format("The {} are in use by another program. Try again in a moment.", contents);
    case DatabaseTrouble::full:
        return fmt::format("The {} can't be saved: the disk is full.", contents);
    case DatabaseTrouble::damaged:
        return fmt::format("The file of the {} is damaged.", contents);
    case DatabaseTrouble::readOnly:
        return fmt::format("The {} can't be changed: their file or its folder is read-only.", contents);
    case DatabaseTrouble::notPermitted:
        return fmt::format("The file of the {} can't be opened: permission denied.", contents);
    case DatabaseTrouble::conflict:
    case DatabaseTrouble::other:
        break;
    }
    const auto reason = systemError != 0 ? std::generic_category().message(systemError) : sqlite3_errstr(code);
    return fmt::format("The file of the {} can't be used: {}", contents, reason);
}

} // namespace

DatabaseError translate(sqlite3* connection, int code, std::string_view contents) {
    const int lastError = errno;
    const int primary = code & 0xff;
    int systemError = 0;
    if (primary == SQLITE_IOERR || primary == SQLITE_CANTOPEN) {
        if (connection) systemError = sqlite3_system_errno(connection);
        // It forgets the reason when it is a COMMIT that fails.
        if (systemError == 0) systemError = lastError;
    }
    const auto trouble = troubleOf(code, systemError);
    return {trouble, sentence(trouble, code, systemError, contents)};
}

} // namespace bridge
