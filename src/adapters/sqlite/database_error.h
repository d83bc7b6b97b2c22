#pragma once

#include "base/platform_error.h"

#include <string_view>

typedef struct sqlite3 sqlite3;

namespace bridge {

enum class DatabaseTrouble {
    busy,         // another program holds it; worth trying again
    full,         // no room on the disk
    damaged,      // no database, or not a whole one
    readOnly,     // the file or its folder
    notPermitted, // by the rights of the file
    conflict,     // a value that may be there once is there already
    other,
};

class DatabaseError : public PlatformError {
public:
    DatabaseError(DatabaseTrouble trouble, const std::string& message) : PlatformError(message), m_trouble(trouble) {}

    DatabaseTrouble trouble() const { return m_trouble; }

private:
    DatabaseTrouble m_trouble;
};

// What went wrong, as a sentence for the user. `contents` is what the database holds, in the plural: "calendars on this
// computer". `connection` is the one that has just answered with `code`; errno was 0 before it was asked.
DatabaseError translate(sqlite3* connection, int code, std::string_view contents);

} // namespace bridge
