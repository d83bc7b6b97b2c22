#include "adapters/sqlite/statement.h"

#include "adapters/sqlite/database.h"

#include <cerrno>
#include <new>
#include <sqlite3.h>

namespace bridge {

Statement::~Statement() {
    if (m_handle) m_database->keep(m_handle);
}

void Statement::bind(int index, std::string_view text) {
    const char* bytes = text.data() ? text.data() : ""; // no address would be NULL
    check(sqlite3_bind_text64(m_handle, index, bytes, text.size(), SQLITE_TRANSIENT, SQLITE_UTF8));
}

void Statement::bind(int index, int64_t number) {
    check(sqlite3_bind_int64(m_handle, index, number));
}

void Statement::bind(int index, std::nullopt_t) {
    check(sqlite3_bind_null(m_handle, index));
}

bool Statement::step() {
    errno = 0;
    const int code = sqlite3_step(m_handle);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) m_database->fail(code);
    return false;
}

void Statement::run() {
    while (step()) {
    }
}

std::string_view Statement::text(int index) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(m_handle, index));
    if (!bytes && !isNull(index)) throw std::bad_alloc();
    return {bytes, static_cast<size_t>(sqlite3_column_bytes(m_handle, index))};
}

int64_t Statement::number(int index) const {
    return sqlite3_column_int64(m_handle, index);
}

bool Statement::isNull(int index) const {
    return sqlite3_column_type(m_handle, index) == SQLITE_NULL;
}

void Statement::check(int code) const {
    if (code != SQLITE_OK) m_database->fail(code);
}

} // namespace bridge
