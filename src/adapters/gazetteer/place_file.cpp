#include "adapters/gazetteer/place_file.h"

#include <sqlite3.h>
#include <stdexcept>

namespace bridge::gazetteer {

void CloseDatabase::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

void failWith(sqlite3* database) {
    throw std::runtime_error(database ? sqlite3_errmsg(database) : sqlite3_errstr(SQLITE_NOMEM));
}

void runScript(sqlite3* database, const char* sql) {
    if (sqlite3_exec(database, sql, nullptr, nullptr, nullptr) != SQLITE_OK) failWith(database);
}

Statement::Statement(sqlite3* database, std::string_view sql) : m_database(database) {
    sqlite3_stmt* statement = nullptr;
    check(sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT, &statement,
                             nullptr));
    m_statement.reset(statement);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

bool Statement::step() {
    const int code = sqlite3_step(m_statement.get());
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) failWith(m_database);
    reset();
    return false;
}

void Statement::run() {
    while (step()) {
    }
}

int64_t Statement::integer(int column) const {
    return sqlite3_column_int64(m_statement.get(), column);
}

double Statement::real(int column) const {
    return sqlite3_column_double(m_statement.get(), column);
}

std::string Statement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_statement.get(), column));
    return {bytes ? bytes : "", static_cast<size_t>(sqlite3_column_bytes(m_statement.get(), column))};
}

void Statement::reset() {
    sqlite3_reset(m_statement.get());
}

void Statement::bind(int index, std::string_view text) {
    check(sqlite3_bind_text64(m_statement.get(), index, text.data() ? text.data() : "", text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void Statement::bind(int index, int64_t number) {
    check(sqlite3_bind_int64(m_statement.get(), index, number));
}

void Statement::bind(int index, double number) {
    check(sqlite3_bind_double(m_statement.get(), index, number));
}

void Statement::check(int code) const {
    if (code != SQLITE_OK) failWith(m_database);
}

} // namespace bridge::gazetteer
