#include "tests/support/child_process.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>

namespace bridge {

namespace {

struct Pipe {
    FileDescriptor reading;
    FileDescriptor writing;
    Pipe() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
    }
};

} // namespace

ChildProcess::ChildProcess(std::vector<std::string> command, const std::map<std::string, std::string>& environment,
                           const std::string& input) {
    std::vector<std::string> assignments{std::string("PATH=") + getenv("PATH")};
    for (const auto& [name, value] : environment)
        assignments.push_back(name + "=" + value);
    const auto pointers = [](std::vector<std::string>& texts) {
        std::vector<char*> list;
        for (auto& text : texts)
            list.push_back(text.data());
        list.push_back(nullptr);
        return list;
    };
    const auto arguments = pointers(command);
    const auto variables = pointers(assignments);
    Pipe in;
    Pipe out;
    // Descendants whose own parent is gone become ours, to be waited for.
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    m_pid = fork();
    if (m_pid < 0) throw std::runtime_error("no process");
    if (m_pid == 0) {
        // Also when the test crashes.
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        setpgid(0, 0);
        dup2(in.reading.get(), STDIN_FILENO);
        dup2(out.writing.get(), STDOUT_FILENO);
        execvpe(arguments[0], arguments.data(), variables.data());
        _exit(127);
    }
    // On both sides, for either may be first.
    setpgid(m_pid, m_pid);
    m_output = std::move(out.reading);
    if (write(in.writing.get(), input.data(), input.size()) != static_cast<ssize_t>(input.size()))
        throw std::runtime_error("the program takes no input");
}

void ChildProcess::end() {
    if (m_pid == 0) return;
    ::kill(-m_pid, SIGKILL);
    while (waitpid(-m_pid, nullptr, 0) > 0) {
    }
    m_pid = 0;
}

std::string ChildProcess::readLine() {
    if (m_hasEnded) throw std::runtime_error("the program has ended");
    std::string line;
    char letter = 0;
    while (read(m_output.get(), &letter, 1) == 1) {
        if (letter == '\n') return line;
        line += letter;
    }
    m_hasEnded = true;
    return line;
}

bool ChildProcess::isInstalled(const std::string& program) {
    std::istringstream folders(getenv("PATH"));
    for (std::string folder; std::getline(folders, folder, ':');)
        if (access((folder + "/" + program).c_str(), X_OK) == 0) return true;
    return false;
}

} // namespace bridge
