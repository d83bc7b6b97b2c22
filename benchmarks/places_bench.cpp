#include "adapters/gazetteer/gazetteer.h"
#include "adapters/gazetteer/place_search.h"
#include "benchmarks/measure.h"

#include <array>
#include <cstdlib>
#include <fmt/format.h>
#include <fstream>
#include <sqlite3.h>
#include <string>

namespace {

using namespace bridge;
using namespace bridge::bench;

// What is asked, and its words as the file of places holds them.
struct Query {
    const char* text;
    const char* words;
};
constexpr std::array<Query, 12> queries{{{"London", "london"},
                                         {"München", "munchen"},
                                         {"Paris", "paris"},
                                         {"São Paulo", "\"sao\" AND \"paulo\""},
                                         {"New York", "\"new\" AND \"york\""},
                                         {"東京", "東京"},
                                         {"Москва", "москва"},
                                         {"Springfield", "springfield"},
                                         {"San Francisco", "\"san\" AND \"francisco\""},
                                         {"Frankfurt am Main", "\"frankfurt\" AND \"am\" AND \"main\""},
                                         {"Nowhereton", "nowhereton"},
                                         {"Cambridge", "cambridge"}}};

// SQLite alone: the same words, the twenty-five heaviest, with all that is known of them.
class BareSearch {
public:
    BareSearch() {
        const char* sql = "SELECT place.name, region.name, region.country, latitude, longitude FROM "
                          "(SELECT rowid AS id FROM lookup WHERE lookup MATCH ? ORDER BY rowid LIMIT 25) AS found "
                          "JOIN place ON place.id = found.id JOIN region ON region.id = place.region";
        const int opened = sqlite3_open_v2(BRIDGE_PLACES, &m_database, SQLITE_OPEN_READONLY, nullptr);
        if (opened != SQLITE_OK || sqlite3_prepare_v2(m_database, sql, -1, &m_statement, nullptr) != SQLITE_OK) {
            fmt::print(stderr, "{}: {}\n", BRIDGE_PLACES, sqlite3_errmsg(m_database));
            std::exit(1);
        }
        sqlite3_exec(m_database, "PRAGMA mmap_size = 1073741824", nullptr, nullptr, nullptr);
    }
    BareSearch(const BareSearch&) = delete;
    BareSearch& operator=(const BareSearch&) = delete;
    ~BareSearch() {
        sqlite3_finalize(m_statement);
        sqlite3_close(m_database);
    }

    void find(const Query& query) {
        const auto expression = fmt::format("words : ({})", query.words);
        sqlite3_reset(m_statement);
        sqlite3_bind_text(m_statement, 1, expression.c_str(), -1, SQLITE_TRANSIENT);
        while (sqlite3_step(m_statement) == SQLITE_ROW)
            m_length += sqlite3_column_bytes(m_statement, 0);
    }

private:
    sqlite3* m_database = nullptr;
    sqlite3_stmt* m_statement = nullptr;
    int m_length = 0;
};

// Kilobytes of a line of this process's memory: "Rss", "Private_Dirty".
double memory(const std::string& line) {
    std::ifstream file("/proc/self/smaps_rollup");
    for (std::string word; file >> word;)
        if (double kilobytes = 0; word == line + ":" && file >> kilobytes) return kilobytes;
    return 0;
}

// Microseconds for one search, on average.
template <typename Action> double each(Action action) {
    return 1e6 / queries.size() * secondsFor([&] {
               for (const auto& query : queries)
                   action(query);
           });
}

} // namespace

int main() {
    EventLoop loop;
    Gazetteer gazetteer(loop, BRIDGE_PLACES);
    const auto find = [&](const char* text, std::optional<MapRegion> region) {
        return loop.runUntilDone(gazetteer.search({text, region})).size();
    };
    const double resident = memory("Rss");
    const double dirty = memory("Private_Dirty");
    for (int round = 0; round < 1000; ++round)
        find(queries[static_cast<size_t>(round) % queries.size()].text, std::nullopt);
    fmt::print("1,000 searches leave {:.1f} MB resident, of which {:.1f} MB are the bridge's own\n",
               (memory("Rss") - resident) / 1024, (memory("Private_Dirty") - dirty) / 1024);

    // On this thread, as the bare one: the way to the worker and back is the scheduler's.
    gazetteer::PlaceSearch places(BRIDGE_PLACES);
    BareSearch bare;
    const MapRegion munich{{48.137, 11.575}, 50'000, 50'000};
    const auto compared = [&](const char* what, const auto& ours) {
        report(what,
               compare(
                   41, [&] { return each([&](const Query& query) { bare.find(query); }); }, [&] { return each(ours); }),
               "µs");
    };
    compared("a search for a place, against the index alone", [&](const Query& query) {
        places.find({query.text, std::nullopt});
    });
    compared("the same around a point", [&](const Query& query) { places.find({query.text, munich}); });
    compared("the same with the way to its thread and back", [&](const Query& query) { find(query.text, munich); });
    // The beginnings of the most names.
    double worst = 0;
    for (const auto* text : {"san", "s", "saint", "de la", "al", "la", "new", "san jo", "Ки", "san san san san"})
        for (const auto& region : {std::optional<MapRegion>(), std::optional(munich)})
            worst = std::max(worst, secondsFor([&] { places.find({text, region}); }));
    fmt::print("the slowest of twenty bad cases takes {:.1f} ms, on a thread of its own\n", 1e3 * worst);
}
