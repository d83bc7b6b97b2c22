#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

typedef struct sqlite3 sqlite3;
typedef struct sqlite3_stmt sqlite3_stmt;

// The file that brindlefox-gazetteer makes and Gazetteer reads, an SQLite database:
//
//     place(id, name, region, latitude, longitude, weight)   ids go from the heaviest place to the lightest
//     region(id, name, country)                              as they are shown
//     area(key, token)                                       what a country or region may be called: its token
//     lookup(whole, words, lies)                             FTS5, a row for each place
//
// `whole` holds each of a place's names as one word, `words` the words of all of them, `lies` the tokens of the areas
// and the cells that it is in.
namespace bridge::gazetteer {

constexpr int64_t applicationID = 0x42664761; // in the head of the file
constexpr int64_t fileVersion = 1;

struct CloseDatabase {
    void operator()(sqlite3* database) const;
};
using DatabasePointer = std::unique_ptr<sqlite3, CloseDatabase>;

// What SQLite answered, as a runtime_error.
[[noreturn]] void failWith(sqlite3* database);
void runScript(sqlite3* database, const char* sql);

// Made once, run with one set of values after another. Ends before its database. Failures are runtime_errors.
class Statement {
public:
    Statement(sqlite3* database, std::string_view sql);

    template <typename... Values> Statement& with(const Values&... values) {
        reset();
        int index = 0;
        (bind(++index, values), ...);
        return *this;
    }
    bool step();
    void run();

    // Of the present row; columns count from 0.
    int64_t integer(int column) const;
    double real(int column) const;
    std::string text(int column) const;

private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    void reset();
    void bind(int index, std::string_view text);
    void bind(int index, int64_t number);
    void bind(int index, double number);
    void check(int code) const;

    sqlite3* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

} // namespace bridge::gazetteer
