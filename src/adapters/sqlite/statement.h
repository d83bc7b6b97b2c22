#pragma once

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

typedef struct sqlite3_stmt sqlite3_stmt;

namespace bridge {

class Database;

// One use of a prepared statement. Given back to its database at the end of its life.
class Statement {
public:
    Statement(Database& database, sqlite3_stmt* handle) : m_database(&database), m_handle(handle) {}
    Statement(Statement&& other) noexcept
        : m_database(other.m_database), m_handle(std::exchange(other.m_handle, nullptr)) {}
    Statement& operator=(Statement&&) = delete;
    ~Statement();

    // Parameters count from 1, as in SQL. Text is kept byte for byte, also zero bytes.
    void bind(int index, std::string_view text);
    void bind(int index, int64_t number);
    void bind(int index, std::nullopt_t);
    void bind(int index, const char* text) { bind(index, std::string_view(text)); }
    void bind(int index, const std::string& text) { bind(index, std::string_view(text)); }
    template <std::integral T> void bind(int index, T number) { bind(index, static_cast<int64_t>(number)); }
    template <typename T> void bind(int index, const std::optional<T>& value) {
        if (value)
            bind(index, *value);
        else
            bind(index, std::nullopt);
    }

    // False when there is no further row.
    bool step();
    void run();

    // Of the present row; columns count from 0.
    template <typename T> T column(int index) const {
        if constexpr (std::same_as<T, std::string>)
            return std::string(text(index));
        else if constexpr (std::integral<T>)
            return static_cast<T>(number(index));
        else
            return isNull(index) ? T() : T(column<typename T::value_type>(index));
    }
    // Until the next step.
    std::string_view text(int index) const;
    int64_t number(int index) const;
    bool isNull(int index) const;

private:
    void check(int code) const;

    Database* m_database;
    sqlite3_stmt* m_handle;
};

} // namespace bridge
