#pragma once

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"

#include <optional>

namespace bridge {

// The program itself, for a user whose home is `home`.
class BridgeProgram {
public:
    using Variables = std::map<std::string, std::string>;

    // The one of this build, unless the environment names an installed one.
    static std::string path();

    BridgeProgram(const TemporaryFolder& home, const Variables& variables, const std::vector<std::string>& arguments,
                  const std::string& program = path());

    // Blocks for a line of its log that contains `text`; false when the program ends before.
    bool says(const std::string& text);
    bool isListening() { return says("Listening on 127.0.0.1:32123"); }
    void send(int signal) const { ::kill(m_pid, signal); }
    pid_t pid() const { return m_pid; }
    // Blocks for its end: the code that it answers.
    int exitCode();
    // All that it said so far.
    const std::string& log() const { return m_log; }

private:
    std::string readLine();

    ChildProcess m_shell; // which runs it and tells of its end
    pid_t m_pid = 0;
    std::string m_log;
    std::optional<int> m_exitCode;
};

// The environment of that user, with folders of his own; nothing of the machine's.
BridgeProgram::Variables environmentOf(const TemporaryFolder& home);

} // namespace bridge
