#pragma once

#include "base/platform_error.h"
#include "base/task.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bridge {

struct MusicCatalogSong {
    std::string id; // the catalogue's own
    std::string title;
    std::string artistName;
    std::optional<std::string> albumTitle = std::nullopt;
    std::optional<double> duration = std::nullopt; // in seconds
    std::optional<std::string> url = std::nullopt;
    bool operator==(const MusicCatalogSong&) const = default;
};

// An online catalogue of music. Main thread; a search that fails throws PlatformError in the catalogue's own words, in
// which "developer token" says that the catalogue is not configured.
class MusicCatalog {
public:
    virtual ~MusicCatalog() = default;

    // At most `limit` songs (1 to 100), best first. The term is not empty.
    virtual Task<std::vector<MusicCatalogSong>> songs(std::string term, int64_t limit) = 0;
};

} // namespace bridge
