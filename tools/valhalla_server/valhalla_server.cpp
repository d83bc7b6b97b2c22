#include "tools/valhalla_server/valhalla_server.h"

#include "base/platform_error.h"
#include "tools/agent_server/tcp_socket.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace bridge {

namespace {

namespace fs = std::filesystem;

constexpr int socketOfTheServer = 3;
constexpr int millisecondsToEnd = 5000;
constexpr const char* package = VALHALLA_PACKAGE;

bool isInstalled(const char* program) {
    const char* path = std::getenv("PATH");
    std::istringstream folders(path ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((fs::path(folder) / program).c_str(), X_OK) == 0) return true;
    return false;
}

// As node calls it.
std::string architectureOf(const std::string& processor) {
    if (processor == "x86_64") return "x64";
    return processor == "aarch64" ? "arm64" : processor;
}

class Attributes {
public:
    Attributes(int input, int socket) {
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, socket, socketOfTheServer);
        posix_spawn_file_actions_addclosefrom_np(&actions, socketOfTheServer + 1);
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setpgroup(&attributes, 0); // a terminal's Ctrl-C is not meant for it
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        posix_spawnattr_setsigdefault(&attributes, &signals);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Attributes(const Attributes&) = delete;
    Attributes& operator=(const Attributes&) = delete;
    ~Attributes() {
        posix_spawnattr_destroy(&attributes);
        posix_spawn_file_actions_destroy(&actions);
    }

    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
};

} // namespace

std::string ValhallaServer::hindrance() {
    utsname machine{};
    uname(&machine);
    return hindranceOf(package, machine.machine);
}

std::string ValhallaServer::hindranceOf(const std::string& installed, const std::string& processor) {
    const fs::path folder(installed);
    if (!fs::exists(folder / "index.js"))
        return "Valhalla has not been fetched from npm; tools/fetch-npm try does that, when npm reaches its "
               "registry.";
    const auto programs = folder / "linux" / architectureOf(processor);
    for (const auto* program : {"valhalla_node.node", "valhalla_build_tiles"})
        if (!fs::exists(programs / program)) return "Valhalla's npm package has no programs for " + processor + '.';
    for (const auto* program : {"node", "python3"})
        if (!isInstalled(program)) return std::string("Valhalla needs ") + program + ", which is not installed.";
    return {};
}

ValhallaServer::ValhallaServer(const std::string& folder, Timetables timetables) {
    if (const auto reason = hindrance(); !reason.empty()) throw PlatformError(reason);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw PlatformError::fromErrno("A pipe could not be made", errno);
    const FileDescriptor input(ends[0]);
    m_lifeline = FileDescriptor(ends[1]);
    const auto listener = listenOnLoopback(0);
    m_url = "http://127.0.0.1:" + std::to_string(portOf(listener));

    std::vector<std::string> words{"node", VALHALLA_SERVER, package, VALHALLA_EXTRACT, folder};
    if (timetables == Timetables::ofABus) words.emplace_back(VALHALLA_TIMETABLES);
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);
    const Attributes how(input.get(), listener.get());
    if (const int code = posix_spawnp(&m_pid, arguments[0], &how.actions, &how.attributes, arguments.data(), environ))
        throw PlatformError::fromErrno("node could not be started", code);
}

ValhallaServer::~ValhallaServer() {
    end();
}

void ValhallaServer::end() {
    if (m_pid == 0) return;
    m_lifeline = FileDescriptor();
    const FileDescriptor process(static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0)));
    pollfd ended{process.get(), POLLIN, 0};
    if (!process || poll(&ended, 1, millisecondsToEnd) != 1) kill(m_pid, SIGKILL);
    while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
    m_pid = 0;
}

} // namespace bridge
