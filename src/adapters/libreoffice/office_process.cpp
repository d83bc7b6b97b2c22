#include "adapters/libreoffice/office_process.h"

#include "adapters/libreoffice/protocol.h"
#include "base/platform_error.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

namespace bridge::office {

namespace {

std::array<FileDescriptor, 2> makeSocketPair() {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw PlatformError::fromErrno("No socket could be made", errno);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// How the program is started: see the class comment.
class SpawnPlan {
public:
    SpawnPlan(int socket, int errors) {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&m_actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, errors, STDERR_FILENO);
        posix_spawn_file_actions_adddup2(&m_actions, socket, helperSocket);
        posix_spawn_file_actions_addclosefrom_np(&m_actions, helperSocket + 1);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigfillset(&signals);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
    }
    SpawnPlan(const SpawnPlan&) = delete;
    SpawnPlan& operator=(const SpawnPlan&) = delete;
    ~SpawnPlan() {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    pid_t start(std::vector<std::string> command) const {
        std::vector<char*> arguments;
        for (auto& argument : command)
            arguments.push_back(argument.data());
        arguments.push_back(nullptr);
        char* noEnvironment = nullptr;
        pid_t pid = 0;
        const int code = posix_spawn(&pid, arguments[0], &m_actions, &m_attributes, arguments.data(), &noEnvironment);
        if (code != 0) throw PlatformError::fromErrno(command[0] + " could not be started", code);
        return pid;
    }

private:
    posix_spawn_file_actions_t m_actions{};
    posix_spawnattr_t m_attributes{};
};

} // namespace

OfficeProcess::OfficeProcess(const std::vector<std::string>& command, const std::string& errorFile)
    : m_channel(FileDescriptor()) {
    auto [ours, theirs] = makeSocketPair();
    const FileDescriptor errors(open(errorFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (!errors) throw PlatformError::fromErrno("The office program's log could not be made", errno);
    m_pid = SpawnPlan(theirs.get(), errors.get()).start(command);
    m_channel = MessageChannel(std::move(ours));
}

OfficeProcess::~OfficeProcess() {
    // The first process of a PID namespace is in the group, and takes all others of the namespace with it.
    kill(-m_pid, SIGKILL);
    while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

} // namespace bridge::office
