#include "adapters/musicapp/library_index.h"

#include "base/text.h"

namespace bridge::musicapp {

LibraryIndex::LibraryIndex(ContentsPointer contents) : m_contents(std::move(contents)) {
    m_byID.reserve(m_contents->items.size());
    for (const auto& item : m_contents->items)
        m_byID.emplace(item.persistentID, &item);
}

const MusicItem* LibraryIndex::item(uint64_t id) const {
    const auto found = m_byID.find(id);
    return found == m_byID.end() ? nullptr : found->second;
}

std::vector<const MusicItem*> LibraryIndex::search(std::string_view term, In where) {
    const auto& items = m_contents->items;
    if (m_names.empty()) {
        m_names.reserve(items.size());
        // The line feed keeps a term from being found half in one and half in the other.
        for (const auto& item : items)
            m_names.push_back({fold(item.title), fold(item.artist + '\n' + item.album.value_or(""))});
    }
    const auto wanted = fold(term);
    std::vector<const MusicItem*> exact, containing;
    for (size_t index = 0; index < items.size(); ++index) {
        const auto& [title, others] = m_names[index];
        if (title == wanted)
            exact.push_back(&items[index]);
        else if (title.find(wanted) != std::string::npos ||
                 (where == In::everything && others.find(wanted) != std::string::npos))
            containing.push_back(&items[index]);
    }
    exact.insert(exact.end(), containing.begin(), containing.end());
    return exact;
}

} // namespace bridge::musicapp
