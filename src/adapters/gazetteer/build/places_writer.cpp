#include "adapters/gazetteer/build/places_writer.h"

#include "adapters/gazetteer/build/area_names.h"
#include "adapters/gazetteer/cells.h"
#include "adapters/gazetteer/place_file.h"
#include "adapters/gazetteer/place_words.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fmt/format.h>
#include <set>
#include <sqlite3.h>
#include <unistd.h>

namespace bridge::gazetteer {

namespace {

constexpr const char* schema = R"(
    PRAGMA page_size = 4096;
    PRAGMA journal_mode = OFF;
    PRAGMA synchronous = OFF;
    PRAGMA cache_size = -65536;
    CREATE TABLE place(id INTEGER PRIMARY KEY, name TEXT, region INTEGER, latitude REAL, longitude REAL, weight REAL);
    CREATE TABLE region(id INTEGER PRIMARY KEY, name TEXT, country TEXT);
    CREATE TABLE area(key TEXT, token TEXT, PRIMARY KEY(key, token)) WITHOUT ROWID;
    CREATE VIRTUAL TABLE lookup USING fts5(whole, words, lies, content = '', columnsize = 0, detail = column,
                                           tokenize = "ascii tokenchars '.-'");
    BEGIN;)";

// How likely somebody means it, other things being equal.
double weightOf(const GeoName& place) {
    // Of the seat of a government whose people nobody has counted there are more than of a hamlet.
    const int64_t least = place.kind.starts_with("PPLA") ? 500 : 50;
    double weight = 0.8 * std::log10(static_cast<double>(std::max(place.population, least)));
    if (place.kind == "PPLC") weight += 0.4;
    if (place.kind == "PPLX") weight -= 0.4;
    if (place.kind == "PPLH" || place.kind == "PPLQ" || place.kind == "PPLW" || place.kind == "PPLCH") weight -= 0.8;
    return weight;
}

std::string listed(const std::set<std::string>& words) {
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

class Writer {
public:
    explicit Writer(const std::string& path) : m_database(create(path)) {}

    void write(const PlacesInput& input, std::vector<GeoName> places) {
        m_regions = readDivisions(input.regions);
        auto areas = countryNames();
        areas.merge(divisionNames(m_regions));
        areas.merge(divisionNames(readDivisions(input.divisions)));
        Statement area(m_database.get(), "INSERT INTO area VALUES (?, ?)");
        for (const auto& [key, token] : areas)
            area.with(key, token).run();

        std::sort(places.begin(), places.end(), [](const GeoName& left, const GeoName& right) {
            const double difference = weightOf(left) - weightOf(right);
            return difference != 0 ? difference > 0 : left.id < right.id;
        });
        for (size_t index = 0; index < places.size(); ++index)
            add(places[index], static_cast<int64_t>(index) + 1);
        finish();
    }

private:
    static DatabasePointer create(const std::string& path) {
        sqlite3* handle = nullptr;
        const int code = sqlite3_open_v2(path.c_str(), &handle, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
        DatabasePointer database(handle);
        if (code != SQLITE_OK) failWith(handle);
        runScript(handle, schema);
        return database;
    }

    void add(const GeoName& place, int64_t id) {
        m_place
            .with(id, place.name, regionOf(place), place.coordinate.latitude, place.coordinate.longitude,
                  weightOf(place))
            .run();
        std::set<std::string> whole;
        std::set<std::string> words;
        collect(place.name, whole, words);
        for (const auto& name : place.otherNames)
            collect(name, whole, words);
        std::set<std::string> lies{areaToken(place.country), cellAt(place.coordinate)};
        if (!place.region.empty()) lies.insert(areaToken(place.region));
        if (!place.county.empty()) lies.insert(areaToken(place.county));
        m_lookup.with(id, listed(whole), listed(words), listed(lies)).run();
    }

    static void collect(std::string_view name, std::set<std::string>& whole, std::set<std::string>& words) {
        auto found = placeWords(name);
        if (found.empty()) return;
        whole.insert(joined(found));
        words.insert(std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
    }

    int64_t regionOf(const GeoName& place) {
        const auto code = place.region.empty() ? place.country : place.region;
        const auto [entry, isNew] = m_regionIDs.emplace(code, static_cast<int64_t>(m_regionIDs.size()) + 1);
        if (isNew) {
            const auto name = m_regions.find(code);
            Statement(m_database.get(), "INSERT INTO region VALUES (?, ?, ?)")
                .with(entry->second, name == m_regions.end() ? "" : name->second, countryName(place.country))
                .run();
        }
        return entry->second;
    }

    void finish() {
        runScript(m_database.get(), "INSERT INTO lookup(lookup) VALUES ('optimize'); COMMIT;");
        runScript(m_database.get(), fmt::format("PRAGMA application_id = {}; PRAGMA user_version = {}; VACUUM;",
                                                applicationID, fileVersion)
                                        .c_str());
        Statement check(m_database.get(), "PRAGMA integrity_check");
        if (!check.step() || check.text(0) != "ok") throw std::runtime_error("The file that was made is not whole.");
    }

    DatabasePointer m_database;
    Statement m_place{m_database.get(), "INSERT INTO place VALUES (?, ?, ?, ?, ?, ?)"};
    Statement m_lookup{m_database.get(), "INSERT INTO lookup(rowid, whole, words, lies) VALUES (?, ?, ?, ?)"};
    std::map<std::string, std::string> m_regions;
    std::map<std::string, int64_t> m_regionIDs;
};

// Gone at the end unless it was given its name.
class HalfFile {
public:
    explicit HalfFile(const std::string& path) : m_path(path), m_half(fmt::format("{}.{}.half", path, getpid())) {
        std::filesystem::remove(m_half);
    }
    HalfFile(const HalfFile&) = delete;
    HalfFile& operator=(const HalfFile&) = delete;
    ~HalfFile() {
        std::error_code ignored;
        std::filesystem::remove(m_half, ignored);
    }

    const std::string& path() const { return m_half; }
    void complete() { std::filesystem::rename(m_half, m_path); }

private:
    std::string m_path;
    std::string m_half;
};

} // namespace

size_t writePlaces(const PlacesInput& input, const std::string& path) {
    auto places = readGeoNames(input.cities);
    const auto count = places.size();
    HalfFile half(path);
    Writer(half.path()).write(input, std::move(places));
    half.complete();
    return count;
}

} // namespace bridge::gazetteer
