#pragma once

#include "adapters/gazetteer/place_file.h"
#include "adapters/gazetteer/place_reading.h"
#include "platform/local_search.h"

#include <map>
#include <set>

namespace bridge::gazetteer {

// The search itself, over an open file of places. Used by one thread at a time. Everything that fails here is a
// runtime_error: the file is not there, not what it should be, or not whole.
class PlaceSearch : private AreaNamesIndex {
public:
    explicit PlaceSearch(const std::string& path);

    // The best first, twenty-five at most.
    std::vector<MapItem> find(const LocalSearchQuery& query);

private:
    enum class Match { whole, beginning, words };
    struct Candidate {
        Match match;
        std::string whole; // what its name was compared with
    };
    struct Ranked {
        MapItem item;
        double score;
        int64_t id;
    };
    using Candidates = std::map<int64_t, Candidate>;

    Candidates candidates(const std::vector<Reading>& readings, const std::optional<MapRegion>& region);
    // In those cells, or anywhere when there are none. Answers with how many there were, `most` at most.
    int64_t collect(const Reading& reading, Match match, const std::vector<std::string>& cells, int64_t most,
                    Candidates& found);
    Ranked ranked(int64_t id, const Candidate& candidate, const std::optional<MapRegion>& region);

    std::vector<std::string> named(const std::string& key) override;
    std::vector<std::string> beginning(const std::string& key) override;

    DatabasePointer m_database;
    Statement m_lookup;
    Statement m_place;
    Statement m_area;
    Statement m_areasBeginning;
};

} // namespace bridge::gazetteer
