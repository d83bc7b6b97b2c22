#include "tests/playground/playground_process.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bridge {

namespace {

[[noreturn]] void becomePlayground(const std::vector<std::string>& words, const std::string& temporary, int output,
                                   int errors) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    setenv("TMPDIR", temporary.c_str(), 1);
    dup2(open("/dev/null", O_RDONLY), STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    std::vector<char*> arguments{const_cast<char*>(PLAYGROUND)};
    for (const auto& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(PLAYGROUND, arguments.data());
    _exit(127);
}

} // namespace

PlaygroundProcess::PlaygroundProcess(const TemporaryFolder& temporary, const std::vector<std::string>& words)
    : m_errors(memfd_create("errors", MFD_CLOEXEC)) {
    int ends[2];
    if (!m_errors || pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    m_output = FileDescriptor(ends[0]);
    const FileDescriptor writing(ends[1]);
    m_process = fork();
    if (m_process < 0) throw std::runtime_error("no process");
    if (m_process == 0) becomePlayground(words, temporary.path(), writing.get(), m_errors.get());
}

PlaygroundProcess::~PlaygroundProcess() {
    if (m_process < 0) return;
    kill(m_process, SIGKILL);
    waitpid(m_process, nullptr, 0);
}

bool PlaygroundProcess::readMore() {
    char part[4096];
    ssize_t count = 0;
    do
        count = read(m_output.get(), part, sizeof part);
    while (count < 0 && errno == EINTR);
    if (count <= 0) return false;
    m_unread.append(part, static_cast<size_t>(count));
    return true;
}

std::string PlaygroundProcess::readLine() {
    size_t end = 0;
    while ((end = m_unread.find('\n')) == std::string::npos)
        if (!readMore()) return std::exchange(m_unread, {});
    const auto line = m_unread.substr(0, end);
    m_unread.erase(0, end + 1);
    return line;
}

void PlaygroundProcess::signal(int number) const {
    kill(m_process, number);
}

Ended PlaygroundProcess::wait() {
    while (readMore()) {
    }
    int status = 0;
    waitpid(std::exchange(m_process, -1), &status, 0);
    std::string errors(static_cast<size_t>(lseek(m_errors.get(), 0, SEEK_END)), '\0');
    const ssize_t count = pread(m_errors.get(), errors.data(), errors.size(), 0);
    errors.resize(count < 0 ? 0 : static_cast<size_t>(count));
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status), std::exchange(m_unread, {}), errors};
}

Ended runPlayground(const TemporaryFolder& temporary, const std::vector<std::string>& words) {
    PlaygroundProcess process(temporary, words);
    return process.wait();
}

ServingPlayground::ServingPlayground(const TemporaryFolder& temporary, std::vector<std::string> words)
    : m_process(temporary, (words.insert(words.begin(), "--serve"), words)), m_line(m_process.readLine()) {
    if (m_line.empty()) throw std::runtime_error("the playground does not serve: " + m_process.wait().errors);
}

JSONValue::Object ServingPlayground::announced() const {
    return *parseJSON(m_line).object();
}

std::string ServingPlayground::credential() const {
    return *announced().at("credential").string();
}

std::string ServingPlayground::profile() const {
    return *announced().at("profile").string();
}

std::string ServingPlayground::rootID() const {
    return *announced().at("roots").array()->at(0).object()->at("id").string();
}

WireAnswer ServingPlayground::health() const {
    return exchange("GET /health HTTP/1.1\r\nAuthorization: Bearer " + credential() + "\r\n\r\n");
}

WireAnswer ServingPlayground::call(const std::string& operation, const std::string& payload) const {
    JSONValue::Object envelope{{"operation", {operation}}};
    if (!payload.empty()) envelope["payload"] = parseJSON(payload);
    const auto body = writeJSON({std::move(envelope)});
    return exchange("POST /v1/execute HTTP/1.1\r\nAuthorization: Bearer " + credential() +
                    "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
}

Ended ServingPlayground::end(int signal) {
    m_process.signal(signal);
    return m_process.wait();
}

} // namespace bridge
