#pragma once

#include "adapters/musicapp/language.h"

namespace bridge::musicapp {

// A playlist of the user. Songs that a script adds one by one are kept back and given to the player at once, before
// anything is asked of the playlist and at the latest when the script ends; and one that the script has made comes to
// be with all of them. So it is there with every song or not at all, and an error belongs to the statement that asked.
class UserPlaylist : public Object {
public:
    // One that there is.
    UserPlaylist(Player& player, const MusicPlaylist& playlist);
    // A new one, which is not there before it is flushed.
    UserPlaylist(Player& player, std::string name, std::string description);

    void add(uint64_t song);
    // Whether the player doesn't know all of it yet.
    bool isKeptBack() const { return !m_isGone && (!m_id || !m_added.empty()); }
    // What failed to be added is gone, as nothing that changes is ever tried twice.
    void flush(ScriptCall& call);
    void remove(ScriptCall& call);

    std::string className() const override { return "user playlist"; }
    std::string description() const override { return "user playlist \"" + m_name + '"'; }
    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    size_t count(const std::string& className, ScriptCall& call) override;
    bool isSameAs(const Object& other) const override;

private:
    MusicPlaylist current(const MusicLibraryContents& contents) const;
    void requireTracks(const std::string& className) const;

    Player& m_player;
    std::optional<uint64_t> m_id;
    std::string m_name, m_newDescription;
    std::vector<uint64_t> m_added;
    bool m_isGone = false;
};

} // namespace bridge::musicapp
