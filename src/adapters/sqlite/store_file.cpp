#include "adapters/sqlite/store_file.h"

#include "adapters/sqlite/kept_aside.h"

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bridge {

StoreFile::StoreFile(std::string path, const StoreSchema& schema, const Clock& clock, DatabaseOptions options,
                     std::function<void(Database&)> opened)
    : m_path(std::move(path)), m_schema(schema), m_clock(clock), m_options(options), m_opened(std::move(opened)) {}

void StoreFile::use(Transaction::Kind kind, const std::function<void(Database&)>& action) {
    try {
        auto& database = open();
        Transaction transaction(database, kind);
        action(database);
        transaction.commit();
        return;
    } catch (const DatabaseError& error) {
        if (error.trouble() != DatabaseTrouble::damaged) throw;
    }
    // Not in the handler: only here has everything let go of the database.
    setAside();
}

Database& StoreFile::open() {
    if (m_damage) throw PlatformError(*m_damage);

    auto file = identityOf(m_path, m_schema.contents);
    if (!file && m_file)
        throw PlatformError(fmt::format("The file of the {} is gone from {}.", m_schema.contents, m_path));
    if (!file) {
        // SQLite would take a journal without its database for that of the new one.
        if (const auto journal = identityOf(m_path + "-wal", m_schema.contents); journal && !journal->isEmpty)
            setAside();
        createStore(m_path, m_schema, m_options);
        file = identityOf(m_path, m_schema.contents);
    }
    if (!file || !file->isRegular)
        throw PlatformError(fmt::format("The {} can't be opened: {} is no file.", m_schema.contents, m_path));
    if (m_database && file->isSameFile(*m_file) && !file->isEmpty) return *m_database;

    close();
    m_file = file;
    // A store begins whole, so an empty file has lost what was in it.
    if (file->isEmpty)
        throw DatabaseError(DatabaseTrouble::damaged, fmt::format("The file of the {} is empty.", m_schema.contents));
    // A journal gets the rights of its database. Of a file that isn't ours the rights can't be changed, nor are they
    // ours to judge.
    if (struct stat status;
        stat(m_path.c_str(), &status) == 0 && status.st_uid == geteuid() && (status.st_mode & 077) != 0)
        chmod(m_path.c_str(), status.st_mode & 0700);

    auto database = std::make_unique<Database>(m_path, m_schema.contents, m_options);
    prepareStore(*database, m_schema);
    m_opened(*database);
    m_database = std::move(database);
    return *m_database;
}

// Leaves the journal as it is: at that path there may now be another file's.
void StoreFile::close() {
    if (m_database) m_database->whenClosed(Database::WhenClosed::leave);
    m_database.reset();
}

void StoreFile::setAside() {
    close();
    // Damage may also be what an exchange of the file in the middle of a call looks like.
    const auto file = identityOf(m_path, m_schema.contents);
    if (m_file && (!file || !file->isSameFile(*m_file)))
        throw PlatformError(fmt::format("The file of the {} was exchanged. Try again.", m_schema.contents));

    m_damage = fmt::format("The file of the {} is damaged.", m_schema.contents);
    const auto place = keepAside(m_path, formatDate(m_clock.now()).substr(0, 10));
    m_damage = fmt::format("The file of the {} is damaged. It is kept as {}. Brindlefox Apple Bridge begins with an "
                           "empty one when it is started anew.",
                           m_schema.contents, place);
    throw PlatformError(*m_damage);
}

} // namespace bridge
