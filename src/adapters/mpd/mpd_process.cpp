#include "adapters/mpd/mpd_process.h"

#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <csignal>
#include <fcntl.h>
#include <future>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge::mpd {

namespace {

constexpr std::chrono::seconds timeToEnd{3};

// In the child, between fork and exec, where little is allowed.
[[noreturn]] void become(char* const* command, int nothing, int log, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(127); // gone before it could be asked
    setpgid(0, 0);                       // a terminal's Ctrl-C is not meant for it
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    dup2(nothing, STDIN_FILENO);
    dup2(log, STDOUT_FILENO);
    dup2(log, STDERR_FILENO);
    close_range(STDERR_FILENO + 1, ~0U, 0);
    execv(command[0], command);
    _exit(127);
}

} // namespace

MpdProcess::MpdProcess(const std::vector<std::string>& command, const std::string& logFile) {
    const FileDescriptor nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
    const FileDescriptor log(open(logFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (!log) throw PlatformError::fromErrno("MPD's log could not be made", errno);
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (auto& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    std::promise<int> started;
    auto code = started.get_future();
    m_keeper = std::thread([&, parent = getpid()] {
        const pid_t pid = fork();
        if (pid == 0) become(arguments.data(), nothing.get(), log.get(), parent);
        m_pid = pid;
        const int problem = pid < 0 ? errno : 0;
        started.set_value(problem); // from here on nothing of the constructor's is there any more
        if (pid > 0) awaitEnd();
    });
    if (const int problem = code.get(); problem != 0) {
        m_keeper.join();
        throw PlatformError::fromErrno(command[0] + " could not be started", problem);
    }
}

void MpdProcess::awaitEnd() {
    siginfo_t how{};
    while (waitid(P_PID, static_cast<id_t>(m_pid), &how, WEXITED | WNOWAIT) != 0 && errno == EINTR) {
    }
    // Only now is its number free for others, and nobody sends it signals any more.
    const std::lock_guard lock(m_mutex);
    waitpid(m_pid, nullptr, 0);
    m_isRunning = false;
    m_hasEnded.notify_all();
}

MpdProcess::~MpdProcess() {
    {
        std::unique_lock lock(m_mutex);
        const auto hasEnded = [this] { return !m_isRunning; };
        if (m_isRunning) kill(m_pid, SIGTERM);
        if (!m_hasEnded.wait_for(lock, timeToEnd, hasEnded)) kill(m_pid, SIGKILL);
    }
    m_keeper.join();
}

bool MpdProcess::isRunning() const {
    const std::lock_guard lock(m_mutex);
    return m_isRunning;
}

} // namespace bridge::mpd
