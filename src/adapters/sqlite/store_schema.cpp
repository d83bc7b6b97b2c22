#include "adapters/sqlite/store_schema.h"

#include "base/exclusive_rename.h"
#include "base/file_descriptor.h"
#include "base/make_folders.h"
#include "base/uuid.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fmt/format.h>

namespace bridge {

namespace {

int64_t pragma(Database& database, std::string_view name) {
    return database.value<int64_t>(fmt::format("PRAGMA {}", name)).value_or(0);
}

void migrate(Database& database, const StoreSchema& schema) {
    for (auto version = static_cast<size_t>(pragma(database, "user_version")); version < schema.migrations.size();
         ++version)
        database.script(schema.migrations[version]);
    database.script(fmt::format("PRAGMA user_version = {}", schema.migrations.size()).c_str());
}

// A file under a name of its own, gone unless it was given its place.
class NewFile {
public:
    NewFile(int folder, std::string name, const char* contents) : m_folder(folder), m_name(std::move(name)) {
        constexpr int flags = O_CREAT | O_EXCL | O_NOFOLLOW | O_RDWR | O_CLOEXEC;
        const FileDescriptor file(openat(folder, m_name.c_str(), flags, 0600));
        if (!file) throw PlatformError::fromErrno(fmt::format("The file of the {} can't be made", contents), errno);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        for (const auto* suffix : {"", "-journal", "-wal", "-shm"})
            unlinkat(m_folder, (m_name + suffix).c_str(), 0);
    }

    // Returns 0 or an errno. EEXIST: it goes, as something has the place already.
    int place(const std::string& name) { return renameExclusively(m_folder, m_name, m_folder, name); }

private:
    int m_folder;
    std::string m_name;
};

} // namespace

void createStore(const std::string& path, const StoreSchema& schema, const DatabaseOptions& options) {
    const std::filesystem::path place(path);
    makeFolders(place.parent_path(), fmt::format("The folder of the {} can't be made", schema.contents));
    const FileDescriptor folder(open(place.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        throw PlatformError::fromErrno(fmt::format("The folder of the {} can't be opened", schema.contents), errno);

    const auto name = place.filename().string() + ".new-" + makeUUID();
    NewFile file(folder.get(), name, schema.contents);
    {
        Database database((place.parent_path() / name).string(), schema.contents, options);
        database.whenClosed(Database::WhenClosed::fold);
        Transaction transaction(database, Transaction::Kind::write);
        database.script(fmt::format("PRAGMA application_id = {}", schema.applicationID).c_str());
        migrate(database, schema);
        schema.fill(database);
        transaction.commit();
        // Lasting, so nobody ever has to change it on a database that others use.
        database.script("PRAGMA journal_mode = WAL");
    }
    const int code = file.place(place.filename().string());
    if (code != 0 && code != EEXIST)
        throw PlatformError::fromErrno(fmt::format("The file of the {} can't be made", schema.contents), code);
    fsync(folder.get());
}

void prepareStore(Database& database, const StoreSchema& schema) {
    if (pragma(database, "application_id") != schema.applicationID)
        throw DatabaseError(DatabaseTrouble::other,
                            fmt::format("The file of the {} belongs to another program.", schema.contents));
    if (pragma(database, "user_version") > static_cast<int64_t>(schema.migrations.size()))
        throw DatabaseError(DatabaseTrouble::other,
                            fmt::format("The {} were written by a newer version of Brindlefox Apple Bridge, and this "
                                        "one can't read them.",
                                        schema.contents));
    if (const auto answer = database.value<std::string>("PRAGMA quick_check(1)"); answer != "ok")
        throw DatabaseError(DatabaseTrouble::damaged, fmt::format("The file of the {} is damaged.", schema.contents));

    database.whenClosed(Database::WhenClosed::fold);
    // A large import leaves a large journal behind otherwise.
    database.script("PRAGMA journal_size_limit = 16777216");
    if (pragma(database, "user_version") == static_cast<int64_t>(schema.migrations.size())) return;
    Transaction transaction(database, Transaction::Kind::write);
    migrate(database, schema);
    transaction.commit();
}

} // namespace bridge
