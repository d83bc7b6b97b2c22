#include "tests/contracts/music_library_contract.h"

#include "adapters/mpd/mpd_player.h"
#include "adapters/mpd/sound_output.h"
#include "adapters/musicapp/player_music_library.h"
#include "tests/support/temporary_folder.h"
#include "tools/sound_file/sound_file.h"

#include <unistd.h>

namespace bridge {
namespace {

class MpdLibraryUnderTest : public MusicLibraryUnderTest {
public:
    MpdLibraryUnderTest() {
        repair();
        restart();
    }

    std::string hindrance() const override { return access("/usr/bin/mpd", X_OK) == 0 ? "" : "mpd is not installed"; }
    EventLoop& loop() override { return m_loop; }
    MusicLibrary& library() override { return *m_library; }

    void addSong(const std::string& title, const std::string& artist, const std::string& album) override {
        const auto known = now()->items.size();
        writeSoundFile(m_folder / "Music" / (std::to_string(known) + ".flac"),
                       {{{"TITLE", title}, {"ARTIST", artist}, {"ALBUM", album}}, {440}});
        mpd::MpdConnection connection({m_folder.file("MPD/socket")}, m_call);
        connection.send(m_call, [](auto* each) { return mpd_send_update(each, nullptr); });
        connection.finish(m_call);
        while (now()->items.size() == known) {
        }
    }
    uint64_t addPlaylist(const std::string& name, const std::vector<std::string>& titles) override {
        std::vector<uint64_t> songs;
        for (const auto& title : titles)
            for (const auto& item : now()->items)
                if (item.title == title) songs.push_back(item.persistentID);
        return m_player->makePlaylist(name, "", songs, m_call);
    }
    void removePlaylist(uint64_t id) override { m_player->deletePlaylist(id, m_call); }
    void restart() override {
        m_library.reset();
        m_player.reset(); // first, since both would use the same folder
        const mpd::PrivateMpdOptions own{"/usr/bin/mpd", m_folder.file("MPD"), m_folder.file("Music"),
                                         mpd::silentOutput};
        m_player = std::make_shared<mpd::MpdPlayer>(mpd::MpdOptions{{}, own});
        m_library = std::make_unique<musicapp::PlayerMusicLibrary>(m_loop, m_player);
    }
    void breakDown() override {
        m_library.reset();
        m_player.reset();
        std::filesystem::rename(m_folder / "Music", m_folder / "Elsewhere");
        restart();
    }
    void repair() override {
        if (std::filesystem::exists(m_folder / "Elsewhere"))
            std::filesystem::rename(m_folder / "Elsewhere", m_folder / "Music");
        else
            std::filesystem::create_directory(m_folder / "Music");
    }

private:
    musicapp::ContentsPointer now() { return m_player->contents(m_call); }

    TemporaryFolder m_folder;
    mpd::Call m_call{std::chrono::seconds(120)};
    EventLoop m_loop;
    std::shared_ptr<mpd::MpdPlayer> m_player;
    std::unique_ptr<musicapp::PlayerMusicLibrary> m_library;
};

INSTANTIATE_TEST_SUITE_P(Mpd, MusicLibraryContract,
                         testing::Values([] { return std::make_unique<MpdLibraryUnderTest>(); }));

} // namespace
} // namespace bridge
