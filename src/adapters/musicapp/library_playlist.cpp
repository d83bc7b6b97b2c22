#include "adapters/musicapp/library_playlist.h"

#include "adapters/musicapp/arguments.h"
#include "adapters/musicapp/track.h"

namespace bridge::musicapp {

namespace {

LibraryIndex::In searchedArea(const Command& command) {
    const auto* only = command.parameter("only");
    if (!only) return LibraryIndex::In::everything;
    const auto* area = only->as<Constant>();
    if (area && area->name == "songs") return LibraryIndex::In::titles;
    if (area && area->name == "all") return LibraryIndex::In::everything;
    throw ScriptError(applescript::eventFailed, "A search is for songs or for all.");
}

} // namespace

Value LibraryPlaylist::search(const Command& command) const {
    const auto area = searchedArea(command);
    auto found = std::make_shared<std::vector<Value>>();
    for (const auto* item : m_index->search(textArgument(required(command, "for")), area))
        found->emplace_back(track(*item));
    return found;
}

Value LibraryPlaylist::property(const std::string& name, ScriptCall&) {
    if (name == "name") return "Library";
    throw cantGet(name + " of " + description());
}

void LibraryPlaylist::setProperty(const std::string& name, const Value&, ScriptCall&) {
    cantSet(name, *this);
}

std::vector<ObjectPointer> LibraryPlaylist::elements(const std::string& className, ScriptCall&) {
    std::vector<ObjectPointer> tracks;
    for (const auto& item : items(className))
        tracks.push_back(track(item));
    return tracks;
}

ObjectPointer LibraryPlaylist::elementAt(const std::string& className, size_t position, ScriptCall&) {
    const auto& all = items(className);
    return position >= 1 && position <= all.size() ? track(all[position - 1]) : nullptr;
}

size_t LibraryPlaylist::count(const std::string& className, ScriptCall&) {
    return items(className).size();
}

std::optional<std::vector<ObjectPointer>> LibraryPlaylist::elementsWhere(const std::string& className,
                                                                         const std::string& property,
                                                                         const Value& value, ScriptCall&) {
    if (className != "track" || property != "persistent id") return std::nullopt;
    const auto id = idOf(value);
    const auto* item = id ? m_index->item(*id) : nullptr;
    if (!item) return std::vector<ObjectPointer>();
    return std::vector{track(*item)};
}

ObjectPointer LibraryPlaylist::track(const MusicItem& item) const {
    return std::make_shared<Track>(m_index->contents(), item);
}

const std::vector<MusicItem>& LibraryPlaylist::items(const std::string& className) const {
    if (className != "track") throw cantGet("every " + className + " of " + description());
    return m_index->contents()->items;
}

} // namespace bridge::musicapp
