#include "app/music_players.h"

#ifdef HAVE_MPD
#include "adapters/mpd/mpd_player.h"
#include "adapters/mpd/music_folder.h"
#include "adapters/mpd/sound_output.h"
#include "adapters/xdg/xdg_paths.h"
#else
#include "app/no_music_player.h"
#endif

namespace bridge {

#ifdef HAVE_MPD

namespace {

mpd::PrivateMpdOptions privateMpd(const std::string& folder, const std::string& musicFolder) {
    mpd::PrivateMpdOptions options;
    options.folder = folder;
    options.musicFolder = musicFolder;
    options.output = mpd::soundOutput(XdgPaths::ofProcess);
    return options;
}

} // namespace

std::shared_ptr<musicapp::Player> openPrivateMusicPlayer(const std::string& folder, const std::string& musicFolder) {
    return std::make_shared<mpd::MpdPlayer>(mpd::MpdOptions{{}, privateMpd(folder, musicFolder)});
}

std::shared_ptr<musicapp::Player> openUsersMusicPlayer(const std::string& folder) {
    const auto musicFolder = mpd::userMusicFolder(XdgPaths::ofProcess);
    return std::make_shared<mpd::MpdPlayer>(mpd::MpdOptions{XdgPaths::ofProcess, privateMpd(folder, musicFolder)});
}

#else

std::shared_ptr<musicapp::Player> openPrivateMusicPlayer(const std::string&, const std::string&) {
    return std::make_shared<NoMusicPlayer>();
}

std::shared_ptr<musicapp::Player> openUsersMusicPlayer(const std::string&) {
    return std::make_shared<NoMusicPlayer>();
}

#endif

} // namespace bridge
