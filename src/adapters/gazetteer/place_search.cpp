#include "adapters/gazetteer/place_search.h"

#include "adapters/gazetteer/cells.h"
#include "adapters/gazetteer/place_words.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <sqlite3.h>
#include <stdexcept>

namespace bridge::gazetteer {

namespace {

constexpr size_t mostItems = 25;
// Of each way to understand the query; the heaviest places come first. Around a point the lighter ones count, too.
constexpr int64_t mostAnywhere = 60;
constexpr int64_t mostAround = 240;

// In meters, from the middle of the region.
constexpr double leastNear = 75'000;
constexpr double mostNear = 150'000;

std::string fileURI(const std::string& path) {
    std::string uri = "file:";
    for (const char character : path)
        uri += std::string_view("%?#").find(character) == std::string_view::npos
                   ? std::string(1, character)
                   : fmt::format("%{:02x}", static_cast<unsigned char>(character));
    // Nobody changes it while it is open: a new one is renamed over it.
    return uri + "?mode=ro&immutable=1";
}

DatabasePointer open(const std::string& path) {
    sqlite3* handle = nullptr;
    constexpr int flags = SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(fileURI(path).c_str(), &handle, flags, nullptr);
    DatabasePointer database(handle);
    if (code != SQLITE_OK) failWith(handle);
    // Mapped, so that the pages are the system's to keep or to drop, not ours. (No cell_size_check: it would look
    // through each page anew each time that it is visited.)
    runScript(handle, "PRAGMA mmap_size = 1073741824; PRAGMA cache_size = -256; PRAGMA trusted_schema = OFF;"
                      "PRAGMA temp_store = MEMORY");
    Statement identity(handle, "SELECT application_id, user_version FROM pragma_application_id, pragma_user_version");
    if (!identity.step() || identity.integer(0) != applicationID || identity.integer(1) != fileVersion)
        throw std::runtime_error("not a file of places, or of another version");
    return database;
}

// A beginning of one or two letters is that of too many names to mean any.
bool tellsEnough(const std::string& word) {
    constexpr size_t enough = 3;
    return word.size() >= enough;
}

std::string anyOf(const std::vector<std::string>& tokens) {
    std::string expression;
    for (const auto& token : tokens)
        expression += fmt::format("{}\"{}\"", expression.empty() ? "" : " OR ", token);
    return expression;
}

// Words hold letters and digits alone, and tokens are ours: nothing in them is of the language of expressions.
std::string allOf(const std::vector<std::string>& words) {
    std::string expression;
    for (const auto& word : words)
        expression += fmt::format("{}\"{}\"", expression.empty() ? "" : " AND ", word);
    return tellsEnough(words.back()) ? expression + " *" : expression;
}

std::string titleOf(const std::string& name, const std::string& region, const std::string& country) {
    std::string title = name;
    if (!region.empty() && region != name) title += ", " + region;
    if (country != name && country != region) title += ", " + country;
    return title;
}

} // namespace

PlaceSearch::PlaceSearch(const std::string& path)
    : m_database(open(path)),
      m_lookup(m_database.get(), "SELECT rowid FROM lookup WHERE lookup MATCH ? ORDER BY rowid LIMIT ?"),
      m_place(m_database.get(), "SELECT place.name, region.name, region.country, latitude, longitude, weight "
                                "FROM place JOIN region ON region.id = place.region WHERE place.id = ?"),
      m_area(m_database.get(), "SELECT token FROM area WHERE key = ?"),
      m_areasBeginning(m_database.get(), "SELECT token FROM area WHERE key >= ? AND key < ? LIMIT 32") {}

std::vector<MapItem> PlaceSearch::find(const LocalSearchQuery& query) {
    const auto readings = readingsOf(query.naturalLanguageQuery, *this);
    auto found = candidates(readings.strict, query.region);
    if (found.empty()) found = candidates(readings.lenient, query.region);

    std::vector<Ranked> places;
    places.reserve(found.size());
    for (const auto& [id, candidate] : found)
        places.push_back(ranked(id, candidate, query.region));
    std::sort(places.begin(), places.end(), [](const Ranked& left, const Ranked& right) {
        return left.score != right.score ? left.score > right.score : left.id < right.id;
    });
    std::vector<MapItem> items;
    for (auto& place : places) {
        if (items.size() == mostItems) break;
        items.push_back(std::move(place.item));
    }
    return items;
}

PlaceSearch::Candidates PlaceSearch::candidates(const std::vector<Reading>& readings,
                                                const std::optional<MapRegion>& region) {
    const auto most = region ? mostAround : mostAnywhere;
    std::vector<std::string> near;
    if (region) {
        const double half = std::max(region->latitudinalMeters, region->longitudinalMeters) / 2;
        near = cellsAround(region->center, std::clamp(half, leastNear, mostNear));
    }
    Candidates found;
    for (const auto match : {Match::whole, Match::beginning, Match::words})
        for (const auto& reading : readings)
            // When there are more in the world, what is near may be among those that were left out.
            if (collect(reading, match, {}, most, found) == most && region) collect(reading, match, near, most, found);
    return found;
}

int64_t PlaceSearch::collect(const Reading& reading, Match match, const std::vector<std::string>& cells, int64_t most,
                             Candidates& found) {
    const auto whole = joined(reading.words);
    std::string expression;
    switch (match) {
    case Match::whole:
        expression = fmt::format("whole : \"{}\"", whole);
        break;
    case Match::beginning:
        if (!tellsEnough(whole)) return 0;
        expression = fmt::format("whole : \"{}\" *", whole);
        break;
    case Match::words:
        expression = fmt::format("words : ({})", allOf(reading.words));
        break;
    }
    for (const auto& area : reading.areas)
        expression += fmt::format(" AND lies : ({})", anyOf(area));
    if (!cells.empty()) expression += fmt::format(" AND lies : ({})", anyOf(cells));
    m_lookup.with(expression, most);
    int64_t count = 0;
    for (; m_lookup.step(); ++count)
        found.emplace(m_lookup.integer(0), Candidate{match, whole});
    return count;
}

PlaceSearch::Ranked PlaceSearch::ranked(int64_t id, const Candidate& candidate,
                                        const std::optional<MapRegion>& region) {
    if (!m_place.with(id).step()) throw std::runtime_error("a place is missing");
    const auto name = m_place.text(0);
    const MapCoordinate coordinate{m_place.real(3), m_place.real(4)};
    double score = m_place.real(5);
    const auto ownName = joined(placeWords(name));
    if (candidate.match == Match::whole) score += ownName == candidate.whole ? 2.2 : 1.8;
    if (candidate.match == Match::beginning) score += ownName.starts_with(candidate.whole) ? 1.2 : 0.2;
    if (region) score -= 1.2 * std::log10(1 + kilometersBetween(region->center, coordinate) / 10);
    return {{name, coordinate, titleOf(name, m_place.text(1), m_place.text(2)), std::nullopt, std::nullopt}, score, id};
}

std::vector<std::string> PlaceSearch::named(const std::string& key) {
    std::vector<std::string> tokens;
    m_area.with(key);
    while (m_area.step())
        tokens.push_back(m_area.text(0));
    return tokens;
}

std::vector<std::string> PlaceSearch::beginning(const std::string& key) {
    std::vector<std::string> tokens;
    if (!tellsEnough(key)) return tokens;
    m_areasBeginning.with(key, key + '\xff');
    while (m_areasBeginning.step())
        tokens.push_back(m_areasBeginning.text(0));
    return tokens;
}

} // namespace bridge::gazetteer
