#pragma once

#include "base/file_descriptor.h"

#include <csignal>
#include <map>
#include <string>
#include <sys/types.h>
#include <vector>

namespace bridge {

// A program that a test started; it ends with the test, and so does whatever it started itself.
class ChildProcess {
public:
    // `input` is its whole standard input; what it says on standard output can be read from output().
    ChildProcess(std::vector<std::string> command, const std::map<std::string, std::string>& environment,
                 const std::string& input);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { end(); }

    void send(int signal) const { ::kill(m_pid, signal); }
    // Kills it and its descendants and waits for the end of all.
    void end();
    // Blocks for a line without its end; empty when the program ends before. Throws when it had ended before already:
    // nobody is to ask for ever.
    std::string readLine();

    static bool isInstalled(const std::string& program);

private:
    pid_t m_pid = 0;
    FileDescriptor m_output;
    bool m_hasEnded = false;
};

} // namespace bridge
