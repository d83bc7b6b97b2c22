#include "bridges/music/library_search.h"

#include "base/text.h"

namespace bridge {

void LibrarySearch::prepare(std::shared_ptr<const MusicLibraryContents> library) {
    if (library == m_library) return;
    std::vector<Names> names;
    names.reserve(library->items.size());
    for (const auto& item : library->items)
        names.push_back({fold(item.title), fold(item.artist)});
    m_names = std::move(names);
    m_library = std::move(library);
}

std::vector<std::reference_wrapper<const MusicItem>>
LibrarySearch::find(std::shared_ptr<const MusicLibraryContents> library, std::string_view term, size_t limit) {
    const std::string wanted = fold(trim(term));
    const auto& items = library->items;
    if (!wanted.empty()) prepare(library);
    std::vector<std::reference_wrapper<const MusicItem>> found;
    for (size_t index = 0; index < items.size() && found.size() < limit; ++index)
        if (wanted.empty() || m_names[index].title.find(wanted) != std::string::npos ||
            m_names[index].artist.find(wanted) != std::string::npos)
            found.emplace_back(items[index]);
    return found;
}

} // namespace bridge
