#include "adapters/mpd/music_folder.h"

#include "tests/support/temporary_folder.h"

#include <gmock/gmock.h>
#include <map>

namespace bridge::mpd {
namespace {

class MusicFolder : public testing::Test {
protected:
    std::string found() {
        return userMusicFolder([this](const char* name) -> std::optional<std::string> {
            const auto value = variables.find(name);
            return value == variables.end() ? std::nullopt : std::optional(value->second);
        });
    }
    void putUserDirs(const std::string& content) {
        std::filesystem::create_directories(home / ".config");
        putFile(home / ".config/user-dirs.dirs", content);
    }

    TemporaryFolder home;
    std::map<std::string, std::string> variables{{"HOME", home.path()}};
};

TEST_F(MusicFolder, IsCalledMusicWhenNobodySaysOtherwise) {
    EXPECT_EQ(found(), home.file("Music"));
    putUserDirs("# XDG_MUSIC_DIR=\"/wrong\"\nXDG_MUSIC_DIR=\"relative\"\nXDG_MUSIC_DIR=\"\nXDG_VIDEOS_DIR=\"/v\"\n");
    EXPECT_EQ(found(), home.file("Music"));
}

TEST_F(MusicFolder, IsWhereTheUsersFoldersAreSet) {
    putUserDirs("XDG_VIDEOS_DIR=\"$HOME/Films\"\nXDG_MUSIC_DIR=\"$HOME/Musique été\"\n");
    EXPECT_EQ(found(), home.file("Musique été"));
    putUserDirs("XDG_MUSIC_DIR=\"/media/music\"\n");
    EXPECT_EQ(found(), "/media/music");
    variables["XDG_MUSIC_DIR"] = "/elsewhere";
    EXPECT_EQ(found(), "/elsewhere");
}

TEST_F(MusicFolder, IsKnownWithoutAnEnvironment) {
    variables.clear();
    EXPECT_TRUE(found().starts_with('/'));
}

} // namespace
} // namespace bridge::mpd
