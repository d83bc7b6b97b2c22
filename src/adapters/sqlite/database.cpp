#include "adapters/sqlite/database.h"

#include <cerrno>
#include <new>
#include <sqlite3.h>

namespace bridge {

Database::Database(const std::string& path, std::string_view contents, const DatabaseOptions& options)
    : m_contents(contents) {
    constexpr int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    errno = 0;
    const int code = sqlite3_open_v2(path.c_str(), &m_connection, flags, nullptr);
    if (code != SQLITE_OK) {
        const auto error = translate(m_connection, code, m_contents);
        sqlite3_close(m_connection);
        throw error;
    }
    try {
        whenClosed(WhenClosed::leave);
        sqlite3_db_config(m_connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_busy_timeout(m_connection, static_cast<int>(options.busyTimeout.count()));
        // Room for the indexes of a large import, which would go to the disk and come back again and again; used only
        // as far as needed.
        script("PRAGMA cache_size = -16384");
        // A schema that was tampered with can't call functions; sorting leaves nothing private in a temporary file.
        script("PRAGMA trusted_schema = OFF; PRAGMA cell_size_check = ON; PRAGMA foreign_keys = ON;"
               "PRAGMA temp_store = MEMORY; PRAGMA synchronous = FULL");
    } catch (...) {
        sqlite3_close(m_connection);
        throw;
    }
}

Database::~Database() {
    for (const auto& [sql, statement] : m_prepared)
        sqlite3_finalize(statement);
    sqlite3_close(m_connection);
}

void Database::script(const char* sql) {
    errno = 0;
    const int code = sqlite3_exec(m_connection, sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) fail(code);
}

int64_t Database::lastInsertedKey() const {
    return sqlite3_last_insert_rowid(m_connection);
}

bool Database::isInTransaction() const {
    return sqlite3_get_autocommit(m_connection) == 0;
}

void Database::whenClosed(WhenClosed what) {
    sqlite3_db_config(m_connection, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, what == WhenClosed::leave ? 1 : 0, nullptr);
}

// Taken out of the store while it is in use, so that a use within a use has one of its own.
Statement Database::prepare(std::string_view sql) {
    if (const auto found = m_prepared.find(sql); found != m_prepared.end()) {
        auto* handle = found->second;
        m_prepared.erase(found);
        return {*this, handle};
    }
    sqlite3_stmt* handle = nullptr;
    errno = 0;
    const int code = sqlite3_prepare_v3(m_connection, sql.data(), static_cast<int>(sql.size()),
                                        SQLITE_PREPARE_PERSISTENT, &handle, nullptr);
    if (code != SQLITE_OK) fail(code);
    return {*this, handle};
}

void Database::keep(sqlite3_stmt* statement) {
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    bool isKept = false;
    try {
        isKept = m_prepared.emplace(sqlite3_sql(statement), statement).second;
    } catch (const std::bad_alloc&) {
    }
    if (!isKept) sqlite3_finalize(statement);
}

int64_t Database::changedRows() const {
    return sqlite3_changes64(m_connection);
}

void Database::fail(int code) const {
    if ((code & 0xff) == SQLITE_NOMEM) throw std::bad_alloc();
    throw translate(m_connection, code, m_contents);
}

Transaction::Transaction(Database& database, Kind kind) : m_database(database) {
    m_database.run(kind == Kind::write ? "BEGIN IMMEDIATE" : "BEGIN");
}

Transaction::~Transaction() {
    // Some failures have rolled back already.
    if (!m_database.isInTransaction()) return;
    try {
        m_database.run("ROLLBACK");
    } catch (const std::exception&) {
        // The connection is of no use then, and its next statement says so.
    }
}

void Transaction::commit() {
    m_database.run("COMMIT");
}

} // namespace bridge
