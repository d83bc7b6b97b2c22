#include "adapters/mpd/private_mpd.h"

#include "adapters/mpd/mpd_connection.h"
#include "adapters/mpd/running_mpd.h"
#include "adapters/mpd/waiting.h"
#include "base/make_folders.h"

#include <filesystem>
#include <fstream>
#include <sys/un.h>
#include <unistd.h>

namespace bridge::mpd {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds betweenLooks{10};

// As a text of MPD's configuration, which is lines of words and texts.
std::string quoted(const std::string& text) {
    std::string quoted = "\"";
    for (const char byte : sendable(text, "A folder’s name for MPD")) {
        if (byte == '"' || byte == '\\') quoted += '\\';
        quoted += byte;
    }
    return quoted + '"';
}

bool listens(const std::string& socket, musicapp::Call& call) {
    try {
        MpdConnection connection({socket}, call);
        return true;
    } catch (const MpdRefusal&) {
        throw;
    } catch (const PlatformError&) {
        call.check();
        return false;
    }
}

} // namespace

PrivateMpd::PrivateMpd(PrivateMpdOptions options) : m_options(std::move(options)) {}

PrivateMpd::~PrivateMpd() {
    m_process.reset();
    std::error_code ignored;
    if (!m_socketFolder.empty()) fs::remove_all(m_socketFolder, ignored);
}

bool PrivateMpd::isRunning() const {
    const std::lock_guard lock(m_mutex);
    return m_process && m_process->isRunning();
}

std::optional<std::string> PrivateMpd::whyUnavailable() const {
    if (access(m_options.program.c_str(), X_OK) != 0) return "MPD is not installed. Install mpd.";
    std::error_code unreachable;
    if (!fs::is_directory(m_options.musicFolder, unreachable))
        return "There is no music folder " + m_options.musicFolder +
               ". Make it, or set XDG_MUSIC_DIR in ~/.config/user-dirs.dirs.";
    return std::nullopt;
}

MpdServer PrivateMpd::start(musicapp::Call& call) {
    if (isRunning() && listens(m_socket, call)) return {m_socket};
    end();
    if (const auto reason = whyUnavailable()) fail(*reason);
    prepareFolder();
    auto process = std::make_unique<MpdProcess>(
        std::vector<std::string>{m_options.program, "--no-daemon", "--stderr", m_options.folder + '/' + privateConfig},
        m_options.folder + "/log");
    while (!listens(m_socket, call)) {
        if (!process->isRunning()) fail("MPD did not start: " + lastWords());
        pauseFor(betweenLooks, call);
    }
    const std::lock_guard lock(m_mutex);
    m_process = std::move(process);
    return {m_socket};
}

void PrivateMpd::end() {
    std::unique_ptr<MpdProcess> ending; // outside of the lock: it may take its time
    const std::lock_guard lock(m_mutex);
    ending.swap(m_process);
}

void PrivateMpd::prepareFolder() {
    makeFolders(m_options.folder + "/playlists", "The folder of the music player could not be made");
    fs::permissions(m_options.folder, fs::perms::owner_all);
    if (m_socket.empty()) m_socket = socketPath();
    fs::remove(m_socket); // of one that was killed
    std::ofstream config(m_options.folder + '/' + privateConfig);
    config << "music_directory " << quoted(m_options.musicFolder) << "\nplaylist_directory "
           << quoted(m_options.folder + "/playlists") << "\ndb_file " << quoted(m_options.folder + "/database")
           << "\nbind_to_address "
           << quoted(m_socket)
           // What a large library or playlist takes must never end a conversation.
           << "\nmax_output_buffer_size \"262144\"\nmax_command_list_size \"65536\"\nmax_playlist_length \"1000000\""
           << "\nauto_update \"yes\"\nrestore_paused \"yes\"\nzeroconf_enabled \"no\"\nfilesystem_charset \"UTF-8\"\n"
           << m_options.output;
    if (!config.flush()) fail("MPD’s configuration could not be written in " + m_options.folder + ".");
}

std::string PrivateMpd::socketPath() {
    const auto path = m_options.folder + "/socket";
    if (path.size() < sizeof(sockaddr_un::sun_path)) return path;
    auto pattern = (fs::temp_directory_path() / "brindlefox-mpd-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw PlatformError::fromErrno("MPD's socket could not be made", errno);
    m_socketFolder = pattern;
    return pattern + "/socket";
}

pid_t PrivateMpd::processID() const {
    const std::lock_guard lock(m_mutex);
    return m_process ? m_process->id() : -1;
}

std::string PrivateMpd::lastWords() const {
    std::ifstream log(m_options.folder + "/log");
    std::string line, last = "it said nothing.";
    while (std::getline(log, line))
        if (!line.empty()) last = line;
    return last;
}

} // namespace bridge::mpd
