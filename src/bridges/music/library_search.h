#pragma once

#include "platform/music_library.h"

#include <functional>

namespace bridge {

// The titles and artists of a library as they are compared with a term: without case and accents. Prepared on the first
// search of each state of the library.
class LibrarySearch {
public:
    // The first `limit` items, in the library's order, whose title or artist contains the term; all for a term of
    // nothing but white space.
    std::vector<std::reference_wrapper<const MusicItem>> find(std::shared_ptr<const MusicLibraryContents> library,
                                                              std::string_view term, size_t limit);

private:
    struct Names {
        std::string title, artist;
    };
    void prepare(std::shared_ptr<const MusicLibraryContents> library);

    std::shared_ptr<const MusicLibraryContents> m_library;
    std::vector<Names> m_names; // of its items
};

} // namespace bridge
