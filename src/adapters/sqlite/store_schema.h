#pragma once

#include "adapters/sqlite/database.h"

#include <span>

namespace bridge {

// What a database of ours is to hold. Versions only go forward.
struct StoreSchema {
    const char* contents;                    // "calendars on this computer", for the sentences of errors
    int32_t applicationID;                   // tells our databases from those of other programs
    std::span<const char* const> migrations; // the nth makes version n out of the one before
    void (*fill)(Database&);                 // gives a new database its first contents
};

// Makes a new database at `path`, whole or not at all: whoever meets one meets it with its contents. When another
// program was quicker, its database stays. Missing folders are made.
void createStore(const std::string& path, const StoreSchema& schema, const DatabaseOptions& options);

// Sees that the database is ours, whole and of a version that we know, and brings it to the present one. Throws
// DatabaseError, of DatabaseTrouble::damaged where it isn't whole; what is not ours or newer stays untouched.
void prepareStore(Database& database, const StoreSchema& schema);

} // namespace bridge
