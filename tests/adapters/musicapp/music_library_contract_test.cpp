#include "tests/contracts/music_library_contract.h"

#include "tests/fakes/memory_music_library.h"

#include <algorithm>

namespace bridge {
namespace {

// What bridges are tested with behaves as a real library does.
class MemoryLibraryUnderTest : public MusicLibraryUnderTest {
public:
    EventLoop& loop() override { return m_loop; }
    MusicLibrary& library() override { return m_library; }
    void addSong(const std::string& title, const std::string& artist, const std::string& album) override {
        change([&](auto& contents) { contents.items.push_back({++m_id, title, artist, album}); });
    }
    uint64_t addPlaylist(const std::string& name, const std::vector<std::string>& titles) override {
        change([&](auto& contents) {
            MusicPlaylist playlist{++m_id, name, {}};
            for (const auto& title : titles)
                playlist.items.push_back(std::ranges::find(contents.items, title, &MusicItem::title)->persistentID);
            contents.playlists.push_back(playlist);
        });
        return m_id;
    }
    void removePlaylist(uint64_t id) override {
        change([&](auto& contents) {
            std::erase_if(contents.playlists, [&](const auto& each) { return each.persistentID == id; });
        });
    }
    void restart() override {}
    void breakDown() override { m_library.failure = "It is broken."; }
    void repair() override { m_library.failure.reset(); }

private:
    template <typename Change> void change(Change action) {
        auto contents = *m_library.library;
        action(contents);
        m_library.library = std::make_shared<const MusicLibraryContents>(std::move(contents));
    }

    EventLoop m_loop;
    MemoryMusicLibrary m_library;
    uint64_t m_id = 0;
};

INSTANTIATE_TEST_SUITE_P(Memory, MusicLibraryContract,
                         testing::Values([] { return std::make_unique<MemoryLibraryUnderTest>(); }));

} // namespace
} // namespace bridge
