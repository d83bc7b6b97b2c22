#pragma once

#include "adapters/musicapp/player.h"

#include <string_view>
#include <unordered_map>

namespace bridge::musicapp {

// A library's items as they are asked for. Prepared when it is first needed, and anew for each state of the library.
class LibraryIndex {
public:
    enum class In { titles, everything };

    explicit LibraryIndex(ContentsPointer contents);

    const ContentsPointer& contents() const { return m_contents; }
    // nullptr when there is no such item.
    const MusicItem* item(uint64_t id) const;
    // Whose title, or also whose artist or album, contains the term without regard to case and accents. Titles that are
    // just the term come first, so that every title finds itself however many contain it; then in the library's order.
    std::vector<const MusicItem*> search(std::string_view term, In where);

private:
    struct Names {
        std::string title, others;
    };

    ContentsPointer m_contents;
    std::unordered_map<uint64_t, const MusicItem*> m_byID;
    std::vector<Names> m_names; // of the items, folded
};

} // namespace bridge::musicapp
