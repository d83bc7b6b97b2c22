#pragma once

#include "adapters/sqlite/database_error.h"
#include "adapters/sqlite/statement.h"

#include <chrono>
#include <string>
#include <unordered_map>

namespace bridge {

struct DatabaseOptions {
    // How long a call waits for another program's change. It is the main thread that waits. A change of ours takes a
    // few milliseconds, so who is merely unlucky gets through; an import of years takes longer than anybody should wait
    // for a menu to open, and who meets one is told so.
    std::chrono::milliseconds busyTimeout{1500};
};

// One connection to a database file that exists. Used by one thread at a time. Everything here throws DatabaseError.
class Database {
public:
    // `contents` is what it holds, for the sentences of errors: "calendars on this computer".
    Database(const std::string& path, std::string_view contents, const DatabaseOptions& options);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    // A statement with its values in place, prepared once and kept for the next time. Statements end before their
    // database.
    template <typename... Values> Statement query(std::string_view sql, const Values&... values) {
        auto statement = prepare(sql);
        int index = 0;
        (statement.bind(++index, values), ...);
        return statement;
    }
    // For statements without an answer. Answers with the number of rows changed.
    template <typename... Values> int64_t run(std::string_view sql, const Values&... values) {
        query(sql, values...).run();
        return changedRows();
    }
    // The first column of the first row; nothing when there is no row.
    template <typename T, typename... Values> std::optional<T> value(std::string_view sql, const Values&... values) {
        auto statement = query(sql, values...);
        return statement.step() ? std::optional<T>(statement.template column<T>(0)) : std::nullopt;
    }
    // Any number of statements without values.
    void script(const char* sql);

    int64_t lastInsertedKey() const;
    bool isInTransaction() const;

    // What closing does with changes that are still in the journal: puts them into the file, or leaves both as they
    // are, for a file that isn't ours to change. The latter is how it begins.
    enum class WhenClosed { fold, leave };
    void whenClosed(WhenClosed what);

private:
    friend class Statement;
    Statement prepare(std::string_view sql);
    int64_t changedRows() const;
    void keep(sqlite3_stmt* statement);
    [[noreturn]] void fail(int code) const;

    sqlite3* m_connection = nullptr;
    std::string m_contents;
    std::unordered_map<std::string_view, sqlite3_stmt*> m_prepared; // by their own text
};

// All or nothing: rolled back unless committed. Not nested.
class Transaction {
public:
    enum class Kind {
        read, // what is read in it is of one moment
        write // nobody else writes from its beginning on
    };
    Transaction(Database& database, Kind kind);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    void commit();

private:
    Database& m_database;
};

} // namespace bridge
