#include "adapters/musicapp/user_playlist.h"

#include "adapters/musicapp/arguments.h"
#include "adapters/musicapp/track.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace bridge::musicapp {

UserPlaylist::UserPlaylist(Player& player, const MusicPlaylist& playlist)
    : m_player(player), m_id(playlist.persistentID), m_name(playlist.name) {}

UserPlaylist::UserPlaylist(Player& player, std::string name, std::string description)
    : m_player(player), m_name(std::move(name)), m_newDescription(std::move(description)) {}

void UserPlaylist::add(uint64_t song) {
    m_added.push_back(song);
}

void UserPlaylist::flush(ScriptCall& call) {
    if (m_isGone) throw cantGet(description());
    if (m_id && m_added.empty()) return;
    const auto songs = std::exchange(m_added, {});
    if (m_id) return m_player.addSongs(*m_id, songs, call);
    m_isGone = true; // unless it comes to be
    m_id = m_player.makePlaylist(m_name, m_newDescription, songs, call);
    m_isGone = false;
}

void UserPlaylist::remove(ScriptCall& call) {
    if (m_isGone) throw cantGet(description());
    m_added.clear();
    if (m_id) m_player.deletePlaylist(*m_id, call);
    m_isGone = true;
}

Value UserPlaylist::property(const std::string& name, ScriptCall& call) {
    flush(call);
    if (name == "persistent id") return idText(*m_id);
    if (name == "name") return m_name;
    if (name == "description") return m_player.description(*m_id, call);
    throw cantGet(name + " of " + description());
}

void UserPlaylist::setProperty(const std::string& name, const Value&, ScriptCall&) {
    cantSet(name, *this);
}

std::vector<ObjectPointer> UserPlaylist::elements(const std::string& className, ScriptCall& call) {
    requireTracks(className);
    flush(call);
    const auto contents = m_player.contents(call);
    std::unordered_map<uint64_t, const MusicItem*> songs;
    for (const auto& item : contents->items)
        songs.emplace(item.persistentID, &item);
    std::vector<ObjectPointer> tracks;
    for (const auto id : current(*contents).items)
        if (const auto song = songs.find(id); song != songs.end())
            tracks.push_back(std::make_shared<Track>(contents, *song->second));
    return tracks;
}

size_t UserPlaylist::count(const std::string& className, ScriptCall& call) {
    requireTracks(className);
    flush(call);
    return current(*m_player.contents(call)).items.size();
}

bool UserPlaylist::isSameAs(const Object& other) const {
    const auto* playlist = dynamic_cast<const UserPlaylist*>(&other);
    return playlist && (playlist == this || (m_id && playlist->m_id == m_id));
}

MusicPlaylist UserPlaylist::current(const MusicLibraryContents& contents) const {
    const auto found = std::ranges::find(contents.playlists, *m_id, &MusicPlaylist::persistentID);
    if (found == contents.playlists.end()) throw cantGet(description());
    return *found;
}

void UserPlaylist::requireTracks(const std::string& className) const {
    if (className != "track") throw cantGet("every " + className + " of " + description());
}

} // namespace bridge::musicapp
