#pragma once

#include "adapters/musicapp/language.h"
#include "adapters/musicapp/library_index.h"
#include "adapters/musicapp/user_playlist.h"

namespace bridge::musicapp {

// "Music": a library playlist with all tracks and the user's playlists. Plays, pauses, searches, makes, fills and
// deletes playlists. `player` outlives it.
class MusicApplication : public applescript::Application {
public:
    explicit MusicApplication(Player& player);

    std::string name() const override { return "Music"; }
    const Dictionary& dictionary() const override { return m_dictionary; }
    bool isRunning() const override { return m_player.isRunning(); }
    std::string className() const override { return "application"; }
    std::string description() const override { return "application \"Music\""; }

    Value property(const std::string& name, ScriptCall& call) override;
    void setProperty(const std::string& name, const Value& value, ScriptCall& call) override;
    std::vector<ObjectPointer> elements(const std::string& className, ScriptCall& call) override;
    std::optional<std::vector<ObjectPointer>> elementsWhere(const std::string& className, const std::string& property,
                                                            const Value& value, ScriptCall& call) override;
    Value perform(const Command& command, ScriptCall& call) override;
    void scriptEnded() override;

private:
    using PlaylistPointer = std::shared_ptr<UserPlaylist>;

    Value make(const Command& command, ScriptCall& call);
    Value duplicate(const Command& command, ScriptCall& call);
    Value remove(const Command& command, ScriptCall& call);
    Value play(const Command& command, ScriptCall& call);
    std::shared_ptr<LibraryIndex> index(ScriptCall& call);
    std::vector<ObjectPointer> playlists(ScriptCall& call);
    // Gives the player what was kept back.
    void flush(ScriptCall& call);

    Player& m_player;
    Dictionary m_dictionary;
    std::shared_ptr<LibraryIndex> m_index;  // of the library as the last script saw it
    std::vector<PlaylistPointer> m_changed; // by this script
};

} // namespace bridge::musicapp
