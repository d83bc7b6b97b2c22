#pragma once

#include "adapters/musicapp/player.h"

#include <algorithm>
#include <map>

namespace bridge {

// A player that lies in memory, and says what it was told to do.
class MemoryPlayer : public musicapp::Player {
public:
    using Call = musicapp::Call;

    std::vector<std::string> said;
    std::map<uint64_t, std::string> descriptions;
    std::optional<std::string> failure; // of the next thing that changes anything
    bool runs = false;

    void put(MusicLibraryContents contents) {
        m_contents = std::make_shared<const MusicLibraryContents>(std::move(contents));
    }

    bool isRunning() const override { return runs; }
    std::optional<std::string> whyUnavailable() const override { return std::nullopt; }
    musicapp::ContentsPointer contents(Call&) override { return m_contents; }
    std::string description(uint64_t playlist, Call&) override { return descriptions[playlist]; }
    void checkNewName(const std::string& name, Call&) override {
        if (name.find('/') != std::string::npos) throw ScriptError(-10000, "No slashes.");
    }
    uint64_t makePlaylist(const std::string& name, const std::string& description, const std::vector<uint64_t>& songs,
                          Call&) override {
        act("make " + name + text(songs));
        auto changed = *m_contents;
        const auto id = 0x100 + changed.playlists.size();
        changed.playlists.push_back({id, name, songs});
        descriptions[id] = description;
        put(std::move(changed));
        return id;
    }
    void addSongs(uint64_t playlist, const std::vector<uint64_t>& songs, Call&) override {
        act("add" + text(songs));
        auto changed = *m_contents;
        auto& items = std::ranges::find(changed.playlists, playlist, &MusicPlaylist::persistentID)->items;
        items.insert(items.end(), songs.begin(), songs.end());
        put(std::move(changed));
    }
    void deletePlaylist(uint64_t playlist, Call&) override {
        act("delete " + std::to_string(playlist));
        auto changed = *m_contents;
        std::erase_if(changed.playlists, [&](const auto& each) { return each.persistentID == playlist; });
        put(std::move(changed));
    }
    void play(uint64_t song, Call&) override { act("play " + std::to_string(song)); }
    void pause(Call&) override { act("pause"); }

private:
    void act(const std::string& what) {
        if (const auto problem = std::exchange(failure, std::nullopt)) throw ScriptError(-10000, *problem);
        said.push_back(what);
    }
    static std::string text(const std::vector<uint64_t>& songs) {
        std::string text;
        for (const auto song : songs)
            text += ' ' + std::to_string(song);
        return text;
    }

    musicapp::ContentsPointer m_contents = std::make_shared<const MusicLibraryContents>();
};

} // namespace bridge
