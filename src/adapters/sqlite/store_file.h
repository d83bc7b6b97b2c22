#pragma once

#include "adapters/sqlite/file_identity.h"
#include "adapters/sqlite/store_schema.h"
#include "platform/clock.h"

#include <functional>
#include <memory>
#include <optional>
#include <type_traits>

namespace bridge {

// A database file of ours over the life of the program, with all that can happen to it; SqliteEventStore says what its
// user is to see. Opened at the first use.
class StoreFile {
public:
    // `opened` runs after each opening; what it throws makes the opening fail.
    StoreFile(std::string path, const StoreSchema& schema, const Clock& clock, DatabaseOptions options,
              std::function<void(Database&)> opened);

    // Runs `action` on the open database, in one transaction. Throws DatabaseError or PlatformError.
    template <typename Action> auto read(Action action) { return answer(Transaction::Kind::read, action); }
    template <typename Action> auto write(Action action) { return answer(Transaction::Kind::write, action); }

private:
    template <typename Action> auto answer(Transaction::Kind kind, Action& action) {
        using Answer = std::invoke_result_t<Action&, Database&>;
        if constexpr (std::is_void_v<Answer>) {
            use(kind, action);
        } else {
            std::optional<Answer> result;
            use(kind, [&](Database& database) { result.emplace(action(database)); });
            return std::move(*result);
        }
    }
    void use(Transaction::Kind kind, const std::function<void(Database&)>& action);
    Database& open();
    void close();
    [[noreturn]] void setAside();

    std::string m_path;
    StoreSchema m_schema;
    const Clock& m_clock;
    DatabaseOptions m_options;
    std::function<void(Database&)> m_opened;
    std::unique_ptr<Database> m_database;
    std::optional<FileIdentity> m_file;  // the one that is open, or was
    std::optional<std::string> m_damage; // what every call says from now on
};

} // namespace bridge
