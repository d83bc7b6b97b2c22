#include "adapters/xdg/detached_program.h"

#include "base/file_descriptor.h"
#include "base/platform_error.h"

#include <csignal>
#include <fcntl.h>
#include <sys/wait.h>

namespace bridge {

namespace {

constexpr const char* failed = "The program could not be started";

// Only what is safe in the copy of a process with several threads, from here to exec.
[[noreturn]] void run(char* const* command, int report) {
    setsid();
    // Its parent ends at once, so that the system itself waits for it.
    if (const pid_t child = fork(); child != 0) {
        if (child < 0) {
            const int code = errno;
            [[maybe_unused]] const auto written = write(report, &code, sizeof code);
        }
        _exit(0);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    std::signal(SIGPIPE, SIG_DFL);
    const int nowhere = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nowhere, standard);
    if (nowhere > STDERR_FILENO) close(nowhere);
    execv(command[0], command);
    const int code = errno;
    [[maybe_unused]] const auto written = write(report, &code, sizeof code);
    _exit(127);
}

} // namespace

void startDetached(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    for (const auto& each : command)
        arguments.push_back(const_cast<char*>(each.c_str()));
    arguments.push_back(nullptr);

    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) throw PlatformError::fromErrno(failed, errno);
    const FileDescriptor reading(ends[0]);
    FileDescriptor writing(ends[1]);
    const pid_t child = fork();
    if (child < 0) throw PlatformError::fromErrno(failed, errno);
    if (child == 0) run(arguments.data(), writing.get());
    writing = {};
    while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    // Closed without a word by exec.
    int code = 0;
    ssize_t length = 0;
    do
        length = read(reading.get(), &code, sizeof code);
    while (length < 0 && errno == EINTR);
    if (length == sizeof code) throw PlatformError::fromErrno(failed, code);
}

} // namespace bridge
