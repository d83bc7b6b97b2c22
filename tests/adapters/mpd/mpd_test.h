#pragma once

#include "adapters/mpd/mpd_player.h"
#include "adapters/mpd/sound_output.h"
#include "tests/support/temporary_folder.h"
#include "tools/sound_file/sound_file.h"

#include <csignal>
#include <gmock/gmock.h>
#include <unistd.h>

namespace bridge::mpd {

// An MPD of the test's own over a folder with music, which nobody hears.
class MpdTest : public testing::Test {
protected:
    MpdTest() {
        std::filesystem::create_directories(music());
        if (access("/usr/bin/mpd", X_OK) != 0) m_hindrance = "mpd is not installed";
    }
    void SetUp() override {
        if (!m_hindrance.empty()) GTEST_SKIP() << m_hindrance;
    }

    std::filesystem::path music() const { return folder / "Music"; }
    MpdOptions options() const { return {{}, {"/usr/bin/mpd", folder.file("MPD"), music(), silentOutput}}; }

    void addSong(const std::string& name, std::vector<std::pair<std::string, std::string>> tags) {
        const auto path = music() / name;
        std::filesystem::create_directories(path.parent_path());
        writeSoundFile(path, {std::move(tags), {440}});
    }
    void addSongs(int count) {
        for (int number = 1; number <= count; ++number)
            addSong("song " + std::to_string(number) + ".flac", {{"TITLE", "Song " + std::to_string(number)}});
    }
    // What it fails with; "" when it goes well.
    template <typename Action> static std::string failureOf(Action action) {
        try {
            action();
        } catch (const PlatformError& error) {
            return error.what();
        }
        return "";
    }

    MpdPlayer& player() {
        if (!m_player) m_player.emplace(options());
        return *m_player;
    }
    void restart() { m_player.reset(); }
    musicapp::ContentsPointer contents() { return player().contents(call); }
    std::vector<uint64_t> songs() {
        std::vector<uint64_t> ids;
        for (const auto& item : contents()->items)
            ids.push_back(item.persistentID);
        return ids;
    }
    uint64_t songNamed(const std::string& title) {
        for (const auto& item : contents()->items)
            if (item.title == title) return item.persistentID;
        throw std::runtime_error("there is no song " + title);
    }

    TemporaryFolder folder;
    Call call{std::chrono::seconds(60)};

private:
    std::string m_hindrance;
    std::optional<MpdPlayer> m_player;
};

} // namespace bridge::mpd
